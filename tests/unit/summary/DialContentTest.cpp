#include "ui/summary/DialContent.h"
#include "tests/unit/summary/SummaryFixture.h"

#include <cmath>
#include <limits>

namespace {

class DialContentTest : public SummaryFixture
{
protected:
    static QSet<int> ticksOf(const QList<QDateTime> &versions)
    {
        return DialContent::versionTicks(versions, Clock::now());
    }
    static int litCount(double percent)
    {
        int count = 0;
        for (int tick = 0; tick < DialContent::tickCount; ++tick) {
            count += DialContent::isLit(tick, percent, {}) ? 1 : 0;
        }
        return count;
    }
};

TEST_F(DialContentTest, aVersionLightsTheHalfHourOfItsTimeOfDay)
{
    EXPECT_EQ(ticksOf({at(0, 0)}), QSet<int>({0}));
    EXPECT_EQ(ticksOf({at(0, 29, 59)}), QSet<int>({0}));
    EXPECT_EQ(ticksOf({at(0, 30)}), QSet<int>({1}));
    EXPECT_EQ(ticksOf({at(11, 59)}), QSet<int>({23}));
}

TEST_F(DialContentTest, aMomentInUTCIsShownInLocalTime)
{
    EXPECT_EQ(ticksOf({at(9, 15).toUTC()}), QSet<int>({18}));
}

TEST_F(DialContentTest, yesterdaysVersionsLightTheirTimeOfDayToo)
{
    EXPECT_EQ(ticksOf({at(23, 45).addDays(-1)}), QSet<int>({47}));
}

TEST_F(DialContentTest, severalVersionsInOneHalfHourMakeOneTick)
{
    EXPECT_EQ(ticksOf({at(8, 0), at(8, 10), at(8, 29), at(8, 30)}), QSet<int>({16, 17}));
}

TEST_F(DialContentTest, aVersionOfExactly24HoursAgoIsOut)
{
    const QDateTime dayAgo = Clock::now().addSecs(-86400);
    EXPECT_EQ(ticksOf({dayAgo}), QSet<int>());
    EXPECT_EQ(ticksOf({dayAgo.addMSecs(1)}), QSet<int>({24}));
}

TEST_F(DialContentTest, anInvalidDateLightsNothing)
{
    EXPECT_EQ(ticksOf({QDateTime()}), QSet<int>());
}

TEST_F(DialContentTest, withNothingRunningTheVersionsAreLit)
{
    EXPECT_TRUE(DialContent::isLit(3, {}, {3}));
    EXPECT_FALSE(DialContent::isLit(4, {}, {3}));
}

TEST_F(DialContentTest, aRunHidesTheVersions)
{
    EXPECT_FALSE(DialContent::isLit(3, 0.0, {3}));
}

TEST_F(DialContentTest, aRunFillsTheRingFromTheTop)
{
    EXPECT_EQ(litCount(0), 0);
    EXPECT_EQ(litCount(0.0001), 1);
    EXPECT_TRUE(DialContent::isLit(0, 0.0001, {}));
    EXPECT_EQ(litCount(0.5), 24);
    EXPECT_FALSE(DialContent::isLit(24, 0.5, {}));
    EXPECT_EQ(litCount(1), 48);
}

TEST_F(DialContentTest, progressBeyondItsRangeFillsAllOrNothing)
{
    EXPECT_EQ(litCount(7), 48);
    EXPECT_EQ(litCount(-1), 0);
}

TEST_F(DialContentTest, theMarkerStandsAtTheTimeOfDay)
{
    EXPECT_DOUBLE_EQ(DialContent::nowFraction(at(0, 0)), 0);
    EXPECT_DOUBLE_EQ(DialContent::nowFraction(at(12, 0)), 0.5);
    EXPECT_DOUBLE_EQ(DialContent::nowFraction(at(18, 36)), 1116.0 / 1440);
    EXPECT_DOUBLE_EQ(DialContent::nowFraction(QDateTime()), 0);
}

TEST_F(DialContentTest, aFreshInstallationHasNoValue)
{
    EXPECT_EQ(DialContent::value(situation), QStringLiteral("--"));
    EXPECT_EQ(DialContent::caption(situation), QStringLiteral("nessun backup"));
}

TEST_F(DialContentTest, theValueIsTheAgeOfTheLastGoodBackup)
{
    succeed(47 * 60);
    EXPECT_EQ(DialContent::value(situation), QStringLiteral("47 h"));
    EXPECT_EQ(DialContent::caption(situation), QStringLiteral("dall'ultimo backup"));
}

TEST_F(DialContentTest, aLaunchShowsThreeDots)
{
    succeed(5);
    situation.launching = true;
    EXPECT_EQ(DialContent::value(situation), QStringLiteral("..."));
    EXPECT_EQ(DialContent::caption(situation), QStringLiteral("dall'ultimo backup"));
}

TEST_F(DialContentTest, aRunShowsWholePercentsAndItsPhase)
{
    situation.launching = true;
    run(0.4567);
    EXPECT_EQ(DialContent::value(situation), QStringLiteral("45%"));
    EXPECT_EQ(DialContent::caption(situation), QStringLiteral("Analisi dei file"));
}

TEST_F(DialContentTest, percentsAreCutAndStayWithinTheirRange)
{
    EXPECT_EQ(DialContent::wholePercent(0.999), 99);
    EXPECT_EQ(DialContent::wholePercent(1), 100);
    EXPECT_EQ(DialContent::wholePercent(3.2), 100);
    EXPECT_EQ(DialContent::wholePercent(-0.5), 0);
    EXPECT_EQ(DialContent::wholePercent(std::numeric_limits<double>::infinity()), 100);
    EXPECT_EQ(DialContent::wholePercent(std::nan("")), 0);
}

} // namespace
