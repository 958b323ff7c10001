#include "ui/summary/DialFace.h"
#include "tests/unit/summary/SummaryFixture.h"

#include <cmath>
#include <limits>

namespace {

class DialFaceTest : public SummaryFixture
{
protected:
    static QSet<int> slotsOf(const QList<QDateTime> &versions)
    {
        return DialFace::litSlots(versions, Clock::now());
    }
    static int litCount(double percent)
    {
        int count = 0;
        for (int tick = 0; tick < DialFace::tickCount; ++tick) {
            count += DialFace::isLit(tick, percent, {}) ? 1 : 0;
        }
        return count;
    }
};

TEST_F(DialFaceTest, aVersionLightsTheHalfHourOfItsTimeOfDay)
{
    EXPECT_EQ(slotsOf({at(0, 0)}), QSet<int>({0}));
    EXPECT_EQ(slotsOf({at(0, 29, 59)}), QSet<int>({0}));
    EXPECT_EQ(slotsOf({at(0, 30)}), QSet<int>({1}));
    EXPECT_EQ(slotsOf({at(11, 59)}), QSet<int>({23}));
}

TEST_F(DialFaceTest, aMomentInUTCIsShownInLocalTime)
{
    EXPECT_EQ(slotsOf({at(9, 15).toUTC()}), QSet<int>({18}));
}

TEST_F(DialFaceTest, yesterdaysVersionsLightTheirTimeOfDayToo)
{
    EXPECT_EQ(slotsOf({at(23, 45).addDays(-1)}), QSet<int>({47}));
}

TEST_F(DialFaceTest, severalVersionsInOneHalfHourMakeOneTick)
{
    EXPECT_EQ(slotsOf({at(8, 0), at(8, 10), at(8, 29), at(8, 30)}), QSet<int>({16, 17}));
}

TEST_F(DialFaceTest, aVersionOfJust24HoursAgoIsOut)
{
    const QDateTime dayAgo = Clock::now().addSecs(-86400);
    EXPECT_EQ(slotsOf({dayAgo}), QSet<int>());
    EXPECT_EQ(slotsOf({dayAgo.addMSecs(1)}), QSet<int>({24}));
}

TEST_F(DialFaceTest, whatIsNoMomentLightsNothing)
{
    EXPECT_EQ(slotsOf({QDateTime()}), QSet<int>());
}

TEST_F(DialFaceTest, withNothingRunningTheVersionsShine)
{
    EXPECT_TRUE(DialFace::isLit(3, {}, {3}));
    EXPECT_FALSE(DialFace::isLit(4, {}, {3}));
}

TEST_F(DialFaceTest, aRunHidesTheVersions)
{
    EXPECT_FALSE(DialFace::isLit(3, 0.0, {3}));
}

TEST_F(DialFaceTest, aRunFillsTheRingFromTheTop)
{
    EXPECT_EQ(litCount(0), 0);
    EXPECT_EQ(litCount(0.0001), 1);
    EXPECT_TRUE(DialFace::isLit(0, 0.0001, {}));
    EXPECT_EQ(litCount(0.5), 24);
    EXPECT_FALSE(DialFace::isLit(24, 0.5, {}));
    EXPECT_EQ(litCount(1), 48);
}

TEST_F(DialFaceTest, progressBeyondItsRangeFillsAllOrNothing)
{
    EXPECT_EQ(litCount(7), 48);
    EXPECT_EQ(litCount(-1), 0);
}

TEST_F(DialFaceTest, theMarkerStandsAtTheTimeOfDay)
{
    EXPECT_DOUBLE_EQ(DialFace::nowFraction(at(0, 0)), 0);
    EXPECT_DOUBLE_EQ(DialFace::nowFraction(at(12, 0)), 0.5);
    EXPECT_DOUBLE_EQ(DialFace::nowFraction(at(18, 36)), 1116.0 / 1440);
    EXPECT_DOUBLE_EQ(DialFace::nowFraction(QDateTime()), 0);
}

TEST_F(DialFaceTest, aFreshInstallationHasNoValue)
{
    EXPECT_EQ(DialFace::value(situation), QStringLiteral("--"));
    EXPECT_EQ(DialFace::caption(situation), QStringLiteral("nessun backup"));
}

TEST_F(DialFaceTest, theValueIsTheAgeOfTheLastGoodBackup)
{
    succeed(47 * 60);
    EXPECT_EQ(DialFace::value(situation), QStringLiteral("47 h"));
    EXPECT_EQ(DialFace::caption(situation), QStringLiteral("dall'ultimo backup"));
}

TEST_F(DialFaceTest, aLaunchShowsThreeDots)
{
    succeed(5);
    situation.launching = true;
    EXPECT_EQ(DialFace::value(situation), QStringLiteral("..."));
    EXPECT_EQ(DialFace::caption(situation), QStringLiteral("dall'ultimo backup"));
}

TEST_F(DialFaceTest, aRunShowsWholePercentsAndItsPhase)
{
    situation.launching = true;
    run(0.4567);
    EXPECT_EQ(DialFace::value(situation), QStringLiteral("45%"));
    EXPECT_EQ(DialFace::caption(situation), QStringLiteral("Analisi dei file"));
}

TEST_F(DialFaceTest, percentsAreCutAndStayWithinTheirRange)
{
    EXPECT_EQ(DialFace::wholePercent(0.999), 99);
    EXPECT_EQ(DialFace::wholePercent(1), 100);
    EXPECT_EQ(DialFace::wholePercent(3.2), 100);
    EXPECT_EQ(DialFace::wholePercent(-0.5), 0);
    EXPECT_EQ(DialFace::wholePercent(std::numeric_limits<double>::infinity()), 100);
    EXPECT_EQ(DialFace::wholePercent(std::nan("")), 0);
}

} // namespace
