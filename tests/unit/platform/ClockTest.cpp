#include "platform/Clock.h"

#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

TEST(Clock, tellsTheSystemsTimeInUTC)
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const QDateTime now = Clock::now();
    EXPECT_EQ(now.timeSpec(), Qt::UTC);
    EXPECT_LE(before, now);
    EXPECT_LE(now, QDateTime::currentDateTimeUtc());
    const auto reading = Clock::steady();
    EXPECT_LE(reading, Clock::steady());
}

TEST(Clock, anotherIsInForceForItsLifeAlone)
{
    ManualClock manual;
    {
        const ScopedClock inForce(manual);
        const auto reading = Clock::steady();
        EXPECT_EQ(Clock::now(), manual.moment());
        manual.advance(std::chrono::seconds(5));
        EXPECT_EQ(Clock::now(), manual.moment());
        EXPECT_EQ(Clock::steady() - reading, std::chrono::seconds(5));
    }
    EXPECT_NE(Clock::now(), manual.moment());
}
