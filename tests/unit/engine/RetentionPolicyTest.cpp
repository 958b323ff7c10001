#include "engine/RetentionPolicy.h"

#include <gtest/gtest.h>

namespace {

QString policy(qint64 keepDays, qint64 intervalHours = 1)
{
    return retentionPolicy(keepDays, intervalHours).join(u' ');
}

TEST(RetentionPolicy, everyChoiceInTheListKeepsWhatItPromises)
{
    const std::vector<std::pair<qint64, const char *>> table = {
        {-1, "--keep-last 1"},
        {7, "--keep-hourly 24 --keep-daily 7"},
        {30, "--keep-hourly 24 --keep-daily 30"},
        {90, "--keep-hourly 24 --keep-daily 30 --keep-weekly 12"},
        {180, "--keep-hourly 24 --keep-daily 30 --keep-weekly 25"},
        {365, "--keep-hourly 24 --keep-daily 30 --keep-weekly 52"},
        {730, "--keep-hourly 24 --keep-daily 30 --keep-weekly 104"},
        {1825, "--keep-hourly 24 --keep-daily 30 --keep-weekly 260"},
        {0, "--keep-hourly 24 --keep-daily 30 --keep-weekly 5200"},
    };
    for (const auto &[days, arguments] : table) {
        EXPECT_EQ(policy(days), QString::fromUtf8(arguments)) << days;
    }
}

TEST(RetentionPolicy, theHourlyPartFollowsTheSchedulesPace)
{
    const std::vector<std::pair<qint64, int>> table = {
        {1, 24}, {2, 12}, {3, 8}, {4, 6}, {6, 4}, {8, 3}, {12, 2}, {13, 1}, {18, 1}, {23, 1},
    };
    for (const auto &[hours, count] : table) {
        EXPECT_EQ(policy(7, hours), QStringLiteral("--keep-hourly %1 --keep-daily 7").arg(count))
            << hours;
    }
}

TEST(RetentionPolicy, anIntervalBelowAnHourCountsAsOne)
{
    EXPECT_EQ(policy(7, 0), policy(7, 1));
    EXPECT_EQ(policy(7, -3), policy(7, 1));
}

TEST(RetentionPolicy, anIntervalOfADayOrMoreHasNoHourlyPart)
{
    EXPECT_EQ(policy(7, 24), QStringLiteral("--keep-daily 7"));
    EXPECT_EQ(policy(0, 48), QStringLiteral("--keep-daily 30 --keep-weekly 5200"));
}

TEST(RetentionPolicy, theDailyPartEndsAtThirtyAndTheWeeklyOneBeginsBehindIt)
{
    EXPECT_EQ(policy(1), QStringLiteral("--keep-hourly 24 --keep-daily 1"));
    EXPECT_EQ(policy(29), QStringLiteral("--keep-hourly 24 --keep-daily 29"));
    EXPECT_EQ(policy(31), QStringLiteral("--keep-hourly 24 --keep-daily 30 --keep-weekly 4"));
    EXPECT_EQ(policy(45), QStringLiteral("--keep-hourly 24 --keep-daily 30 --keep-weekly 6"));
}

TEST(RetentionPolicy, everyNegativeNumberKeepsTheLastVersionOnly)
{
    EXPECT_EQ(policy(-5, 6), QStringLiteral("--keep-last 1"));
}

} // namespace
