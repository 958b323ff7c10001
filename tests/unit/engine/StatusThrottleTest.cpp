#include "engine/StatusThrottle.h"

#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

class StatusThrottleTest : public testing::Test
{
protected:
    ManualClock clock;
    ScopedClock clockInForce{clock};
    StatusThrottle throttle;
};

TEST_F(StatusThrottleTest, theFirstTurnComesAtOnce)
{
    EXPECT_TRUE(throttle.takeTurn());
}

TEST_F(StatusThrottleTest, ofFiveHundredAttemptsInASecondTwoAreTurns)
{
    int turns = 0;
    for (int attempt = 0; attempt < 500; ++attempt) {
        turns += throttle.takeTurn() ? 1 : 0;
        clock.advance(2ms);
    }
    EXPECT_EQ(turns, 2);
}

TEST_F(StatusThrottleTest, theNextWriteComesAfterMoreThanSevenTenths)
{
    EXPECT_TRUE(throttle.takeTurn());
    clock.advance(700ms);
    EXPECT_FALSE(throttle.takeTurn());
    clock.advance(1ms);
    EXPECT_TRUE(throttle.takeTurn());
    // The pause is counted from the last turn.
    clock.advance(700ms);
    EXPECT_FALSE(throttle.takeTurn());
}

TEST_F(StatusThrottleTest, aClockPutBackDoesNotStopTheTurns)
{
    EXPECT_TRUE(throttle.takeTurn());
    clock.set(clock.moment().addYears(-3));
    clock.advance(701ms);
    EXPECT_TRUE(throttle.takeTurn());
}

TEST_F(StatusThrottleTest, aClockPutForwardMakesNoTurn)
{
    EXPECT_TRUE(throttle.takeTurn());
    clock.set(clock.moment().addYears(3));
    EXPECT_FALSE(throttle.takeTurn());
}

} // namespace
