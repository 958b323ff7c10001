#include "platform/WeekOfYear.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

struct Case
{
    const char *region;
    const char *timeZone;
    const char *moment; ///< in UTC
    int week;
};

void PrintTo(const Case &row, std::ostream *out)
{
    *out << row.region << ' ' << row.timeZone << ' ' << row.moment;
}

// The region is read once in a process, so each case has one of its own, whose exit code is the
// week.
class WeekOfYear : public testing::TestWithParam<Case>
{
};

TEST_P(WeekOfYear, followsTheRegionAndTheTimeZone)
{
    const Case &row = GetParam();
    EXPECT_EXIT(
        {
            qputenv("LC_ALL", row.region);
            qputenv("TZ", row.timeZone);
            const auto moment = QDateTime::fromString(QLatin1String(row.moment), Qt::ISODate);
            std::_Exit(weekOfYear(moment));
        },
        testing::ExitedWithCode(row.week), "");
}

// In Italy a week begins on Monday, and the first one has at least four days in the year.
INSTANTIATE_TEST_SUITE_P(
    italy, WeekOfYear,
    testing::Values(Case{"it_IT.UTF-8", "Europe/Rome", "2026-01-01T12:00:00Z", 1},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2026-01-04T12:00:00Z", 1},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2026-01-05T12:00:00Z", 2},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2026-12-31T12:00:00Z", 53},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2027-01-03T12:00:00Z", 53},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2027-01-04T12:00:00Z", 1},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2024-12-29T12:00:00Z", 52},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2024-12-30T12:00:00Z", 1},
                    Case{"it_IT.UTF-8", "Europe/Rome", "2026-05-17T12:00:00Z", 20}));

// In the United States it begins on Sunday, and the first one is that of January 1st.
INSTANTIATE_TEST_SUITE_P(
    unitedStates, WeekOfYear,
    testing::Values(Case{"en_US.UTF-8", "America/New_York", "2026-01-03T12:00:00Z", 1},
                    Case{"en_US.UTF-8", "America/New_York", "2026-01-04T12:00:00Z", 2},
                    Case{"en_US.UTF-8", "America/New_York", "2026-12-26T12:00:00Z", 52},
                    Case{"en_US.UTF-8", "America/New_York", "2026-12-27T12:00:00Z", 1},
                    Case{"en_US.UTF-8", "America/New_York", "2027-01-02T12:00:00Z", 1},
                    Case{"en_US.UTF-8", "America/New_York", "2027-01-03T12:00:00Z", 2}));

// With menus in one language and dates in the format of a different one, the weeks are those of the
// dates.
TEST(WeekOfYearLocales, theOneOfDatesCounts)
{
    EXPECT_EXIT(
        {
            qunsetenv("LC_ALL");
            qputenv("LANG", "en_US.UTF-8");
            qputenv("LC_MESSAGES", "en_US.UTF-8");
            qputenv("LC_TIME", "it_IT.UTF-8");
            qputenv("TZ", "UTC");
            // A Sunday: in the United States the second week has begun.
            std::_Exit(weekOfYear(QDateTime(QDate(2026, 1, 4), QTime(12, 0), Qt::UTC)));
        },
        testing::ExitedWithCode(1), "");
}

TEST(WeekOfYearLocales, theGeneralOneCountsWhereDatesHaveNone)
{
    EXPECT_EXIT(
        {
            qunsetenv("LC_ALL");
            qputenv("LANG", "it_IT.UTF-8");
            qputenv("LC_MESSAGES", "en_US.UTF-8");
            qputenv("LC_TIME", "");
            qputenv("TZ", "UTC");
            std::_Exit(weekOfYear(QDateTime(QDate(2026, 1, 4), QTime(12, 0), Qt::UTC)));
        },
        testing::ExitedWithCode(1), "");
}

// Monday has begun in one place and not in another.
INSTANTIATE_TEST_SUITE_P(
    timeZones, WeekOfYear,
    testing::Values(Case{"it_IT.UTF-8", "Europe/Rome", "2026-01-04T23:30:00Z", 2},
                    Case{"it_IT.UTF-8", "UTC", "2026-01-04T23:30:00Z", 1},
                    Case{"it_IT.UTF-8", "Pacific/Auckland", "2026-01-04T11:30:00Z", 2},
                    Case{"it_IT.UTF-8", "America/Los_Angeles", "2026-01-05T07:30:00Z", 1}));

// No region at all still gives a week.
INSTANTIATE_TEST_SUITE_P(noRegion, WeekOfYear,
                         testing::Values(Case{"C", "UTC", "2026-05-14T12:00:00Z", 20},
                                         Case{"C.UTF-8", "UTC", "2026-05-14T12:00:00Z", 20},
                                         Case{"", "UTC", "2026-05-14T12:00:00Z", 20},
                                         Case{"no such region", "UTC", "2026-05-14T12:00:00Z",
                                              20}));

} // namespace
