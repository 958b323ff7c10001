#include "engine/RetentionPolicy.h"

#include <gtest/gtest.h>

namespace {

/// The parts of a policy, each with its number.
QString policy(qint64 keepDays, qint64 intervalHours = 1)
{
    const ResticForget::Policy policy = retentionPolicy(keepDays, intervalHours);
    QStringList parts;
    for (const auto &[unit, count] :
         {std::pair("last", policy.last), std::pair("hourly", policy.hourly),
          std::pair("daily", policy.daily), std::pair("weekly", policy.weekly)}) {
        if (count) {
            parts.append(QStringLiteral("%1 %2").arg(QLatin1String(unit)).arg(*count));
        }
    }
    return parts.join(u' ');
}

TEST(RetentionPolicy, everyChoiceInTheListKeepsWhatItPromises)
{
    const std::vector<std::pair<qint64, const char *>> table = {
        {-1, "last 1"},
        {7, "hourly 24 daily 7"},
        {30, "hourly 24 daily 30"},
        {90, "hourly 24 daily 30 weekly 12"},
        {180, "hourly 24 daily 30 weekly 25"},
        {365, "hourly 24 daily 30 weekly 52"},
        {730, "hourly 24 daily 30 weekly 104"},
        {1825, "hourly 24 daily 30 weekly 260"},
        {0, "hourly 24 daily 30 weekly 5200"},
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
        EXPECT_EQ(policy(7, hours), QStringLiteral("hourly %1 daily 7").arg(count)) << hours;
    }
}

TEST(RetentionPolicy, anIntervalBelowAnHourCountsAsOne)
{
    EXPECT_EQ(policy(7, 0), policy(7, 1));
    EXPECT_EQ(policy(7, -3), policy(7, 1));
}

TEST(RetentionPolicy, anIntervalOfADayOrMoreHasNoHourlyPart)
{
    EXPECT_EQ(policy(7, 24), QStringLiteral("daily 7"));
    EXPECT_EQ(policy(0, 48), QStringLiteral("daily 30 weekly 5200"));
}

TEST(RetentionPolicy, theDailyPartEndsAtThirtyAndTheWeeklyOneBeginsBehindIt)
{
    EXPECT_EQ(policy(1), QStringLiteral("hourly 24 daily 1"));
    EXPECT_EQ(policy(29), QStringLiteral("hourly 24 daily 29"));
    EXPECT_EQ(policy(31), QStringLiteral("hourly 24 daily 30 weekly 4"));
    EXPECT_EQ(policy(45), QStringLiteral("hourly 24 daily 30 weekly 6"));
}

TEST(RetentionPolicy, everyNegativeNumberKeepsTheLastVersionOnly)
{
    EXPECT_EQ(policy(-5, 6), QStringLiteral("last 1"));
}

} // namespace
