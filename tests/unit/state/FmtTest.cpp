#include "state/Fmt.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

QDateTime utc(const char *moment)
{
    return QDateTime::fromString(QLatin1String(moment), Qt::ISODateWithMs);
}

/// Italian texts in Rome, on a Saturday afternoon.
class FmtTest : public testing::Test
{
protected:
    FmtTest()
    {
        qputenv("LC_ALL", "it_IT.UTF-8");
        qputenv("TZ", "Europe/Rome");
    }
    ~FmtTest() override { Fmt::setLocalisations({QStringLiteral("it")}); }

    ManualClock clock{utc("2026-05-16T12:30:00Z")};

    [[nodiscard]] QDateTime ago(qint64 milliseconds) const
    {
        return clock.moment().addMSecs(-milliseconds);
    }

private:
    ScopedClock scoped{clock};
};

constexpr qint64 second = 1000;
constexpr qint64 minute = 60 * second;
constexpr qint64 hour = 60 * minute;
constexpr qint64 dayLong = 24 * hour;

#define EXPECT_TEXT(actual, expected) EXPECT_EQ((actual).toStdString(), (expected))

TEST_F(FmtTest, theUsersOwnLocaleIsUsedIfItHasTheProgramsLanguage)
{
    const QStringList italian{QStringLiteral("it")};
    EXPECT_TEXT(Fmt::localeFor(italian, QStringLiteral("it_IT.UTF-8")), "it_IT");
    EXPECT_TEXT(Fmt::localeFor(italian, QStringLiteral("it_CH")), "it_CH");
    EXPECT_TEXT(Fmt::localeFor(italian, QStringLiteral("it")), "it");
    EXPECT_TEXT(Fmt::localeFor(italian, QStringLiteral("it_IT@euro")).left(5), "it_IT");
}

TEST_F(FmtTest, otherwiseTheProgramsLanguageDecides)
{
    const QStringList italian{QStringLiteral("it"), QStringLiteral("en")};
    for (const char *current : {"en_US.UTF-8", "de_DE", "C", "C.UTF-8", "POSIX", "", "_IT", "%%"}) {
        EXPECT_TEXT(Fmt::localeFor(italian, QLatin1String(current)), "it") << current;
    }
}

TEST_F(FmtTest, noLocalisationAtAllMeansEnglish)
{
    EXPECT_TEXT(Fmt::localeFor({}, QStringLiteral("it_IT")), "en");
    EXPECT_TEXT(Fmt::localeFor({}, QStringLiteral("en_GB")), "en_GB");
}

TEST_F(FmtTest, theLocaleFollowsEnvironmentAndLocalisation)
{
    EXPECT_TEXT(Fmt::locale(), "it_IT");
    qputenv("LC_ALL", "en_GB.UTF-8");
    EXPECT_TEXT(Fmt::locale(), "it");
    Fmt::setLocalisations({QStringLiteral("en")});
    EXPECT_TEXT(Fmt::locale(), "en_GB");
    qunsetenv("LC_ALL");
    qputenv("LC_TIME", "en_AU.UTF-8");
    qputenv("LANG", "en_US.UTF-8");
    EXPECT_TEXT(Fmt::locale(), "en_AU");
    qunsetenv("LC_TIME");
    EXPECT_TEXT(Fmt::locale(), "en_US");
    qunsetenv("LANG");
    EXPECT_TEXT(Fmt::locale(), "en");
}

TEST_F(FmtTest, lessThanAMinuteAwayIsNowOnBothSides)
{
    EXPECT_TEXT(Fmt::relative(ago(0)), "adesso");
    EXPECT_TEXT(Fmt::relative(ago(59'999)), "adesso");
    EXPECT_TEXT(Fmt::relative(ago(-30 * second)), "adesso");
    EXPECT_TEXT(Fmt::relative(ago(-59'999)), "adesso");
    EXPECT_TEXT(Fmt::relative(ago(minute)), "1 minuto fa");
    EXPECT_TEXT(Fmt::relative(ago(-minute)), "tra 1 minuto");
}

TEST_F(FmtTest, relativeTextsUseTheLargestWholeUnit)
{
    EXPECT_TEXT(Fmt::relative(ago(hour - 1)), "59 minuti fa");
    EXPECT_TEXT(Fmt::relative(ago(hour)), "1 ora fa");
    EXPECT_TEXT(Fmt::relative(ago(2 * hour - 1)), "1 ora fa");
    EXPECT_TEXT(Fmt::relative(ago(dayLong - 1)), "23 ore fa");
    EXPECT_TEXT(Fmt::relative(ago(dayLong)), "1 giorno fa");
    EXPECT_TEXT(Fmt::relative(ago(6 * dayLong)), "6 giorni fa");
    EXPECT_TEXT(Fmt::relative(ago(7 * dayLong)), "1 settimana fa");
    EXPECT_TEXT(Fmt::relative(ago(29 * dayLong)), "4 settimane fa");
    EXPECT_TEXT(Fmt::relative(utc("2026-04-16T12:30:00Z")), "1 mese fa");
    EXPECT_TEXT(Fmt::relative(utc("2025-05-17T12:30:00Z")), "11 mesi fa");
    EXPECT_TEXT(Fmt::relative(utc("2025-05-16T12:30:00Z")), "1 anno fa");
    EXPECT_TEXT(Fmt::relative(utc("1996-05-16T12:30:00Z")), "30 anni fa");
    EXPECT_TEXT(Fmt::relative(ago(-2 * hour)), "tra 2 ore");
    EXPECT_TEXT(Fmt::relative(ago(-3 * dayLong)), "tra 3 giorni");
}

// In Rome the 29th of March 2026 has 23 hours.
TEST_F(FmtTest, aDayIsADayAlsoWhenItHasTwentyThreeHours)
{
    clock.set(utc("2026-03-29T10:00:00Z")); // noon, summer time
    EXPECT_TEXT(Fmt::relative(utc("2026-03-28T11:00:00Z")), "1 giorno fa");
}

TEST_F(FmtTest, agesAreCutToWholeUnits)
{
    EXPECT_TEXT(Fmt::since(ago(0)), "<1 min");
    EXPECT_TEXT(Fmt::since(ago(59'900)), "<1 min");
    EXPECT_TEXT(Fmt::since(ago(minute)), "1 min");
    EXPECT_TEXT(Fmt::since(ago(60 * minute - 1)), "59 min");
    EXPECT_TEXT(Fmt::since(ago(60 * minute)), "1 h");
    EXPECT_TEXT(Fmt::since(ago(119 * minute)), "1 h");
    EXPECT_TEXT(Fmt::since(ago(2879 * minute)), "47 h");
    EXPECT_TEXT(Fmt::since(ago(2880 * minute - 1)), "47 h");
    EXPECT_TEXT(Fmt::since(ago(2880 * minute)), "2 g");
    EXPECT_TEXT(Fmt::since(ago(3 * dayLong - 1)), "2 g");
    EXPECT_TEXT(Fmt::since(ago(1000 * dayLong)), "1000 g");
}

TEST_F(FmtTest, anAgeFromTheFutureIsUnderAMinute)
{
    EXPECT_TEXT(Fmt::since(ago(-1)), "<1 min");
    EXPECT_TEXT(Fmt::since(ago(-400 * dayLong)), "<1 min");
}

TEST_F(FmtTest, durationsAreRoundedDownToSecondsFirst)
{
    EXPECT_TEXT(Fmt::duration(0), "0 s");
    EXPECT_TEXT(Fmt::duration(0.99), "0 s");
    EXPECT_TEXT(Fmt::duration(59.999), "59 s");
    EXPECT_TEXT(Fmt::duration(60), "1 min");
    EXPECT_TEXT(Fmt::duration(119), "1 min");
    EXPECT_TEXT(Fmt::duration(3599.9), "59 min");
    EXPECT_TEXT(Fmt::duration(3600), "1 h 0 min");
    EXPECT_TEXT(Fmt::duration(3659), "1 h 0 min");
    EXPECT_TEXT(Fmt::duration(3660), "1 h 1 min");
    EXPECT_TEXT(Fmt::duration(90'061), "25 h 1 min");
}

TEST_F(FmtTest, anImpossibleDurationIsStillAText)
{
    EXPECT_TEXT(Fmt::duration(-0.5), "0 s");
    EXPECT_TEXT(Fmt::duration(-61.5), "-61 s");
    EXPECT_TEXT(Fmt::duration(std::numeric_limits<double>::quiet_NaN()), "0 s");
    EXPECT_TEXT(Fmt::duration(std::numeric_limits<double>::infinity()), "277777777777 h 46 min");
}

TEST_F(FmtTest, datesReadAsInItaly)
{
    const QDateTime moment = utc("2026-05-06T12:05:00Z");
    EXPECT_TEXT(Fmt::dateTime(moment), "6 mag 2026, 14:05");
    EXPECT_TEXT(Fmt::date(moment), "6 maggio 2026");
    EXPECT_TEXT(Fmt::time(moment), "14:05");
    EXPECT_TEXT(Fmt::day(moment), "mercoledì 6 maggio");
}

TEST_F(FmtTest, datesKeepTheConventionsOfTheRegion)
{
    Fmt::setLocalisations({QStringLiteral("en")});
    qputenv("LC_ALL", "en_GB.UTF-8");
    const QDateTime moment = utc("2026-05-06T12:05:00Z");
    EXPECT_TEXT(Fmt::date(moment), "6 May 2026");
    EXPECT_TEXT(Fmt::time(moment), "14:05");
    qputenv("LC_ALL", "en_US.UTF-8");
    EXPECT_TEXT(Fmt::date(moment), "May 6, 2026");
    EXPECT_TEXT(Fmt::relative(ago(2 * hour)), "2 hours ago");
}

TEST_F(FmtTest, itIsItalianWhateverTheRegionsLanguage)
{
    qputenv("LC_ALL", "de_DE.UTF-8");
    EXPECT_TEXT(Fmt::date(utc("2026-05-06T12:05:00Z")), "6 maggio 2026");
    EXPECT_TEXT(Fmt::relative(ago(2 * hour)), "2 ore fa");
}

TEST_F(FmtTest, datesFollowATimeZoneThatChanges)
{
    const QDateTime moment = utc("2026-05-16T12:05:00Z");
    EXPECT_TEXT(Fmt::time(moment), "14:05");
    qputenv("TZ", "America/New_York");
    EXPECT_TEXT(Fmt::time(moment), "08:05");
    qputenv("TZ", "UTC");
    EXPECT_TEXT(Fmt::time(moment), "12:05");
}

TEST_F(FmtTest, daysChangeAtTheUsersMidnight)
{
    EXPECT_TEXT(Fmt::day(utc("2026-05-15T22:00:00Z")), "Oggi");
    EXPECT_TEXT(Fmt::day(utc("2026-05-16T21:59:59Z")), "Oggi");
    EXPECT_TEXT(Fmt::day(utc("2026-05-15T21:59:59Z")), "Ieri");
    EXPECT_TEXT(Fmt::day(utc("2026-05-14T22:00:00Z")), "Ieri");
    EXPECT_TEXT(Fmt::day(utc("2026-05-14T21:59:59Z")), "giovedì 14 maggio");
    EXPECT_TEXT(Fmt::day(utc("2026-05-16T22:00:00Z")), "domenica 17 maggio");
    EXPECT_TEXT(Fmt::day(utc("2025-05-16T12:00:00Z")), "venerdì 16 maggio");
    qputenv("TZ", "UTC");
    EXPECT_TEXT(Fmt::day(utc("2026-05-15T22:00:00Z")), "Ieri");
}

TEST_F(FmtTest, yesterdayReachesOverTheTurnOfTheYear)
{
    clock.set(utc("2026-01-01T12:00:00Z"));
    EXPECT_TEXT(Fmt::day(utc("2025-12-31T12:00:00Z")), "Ieri");
}

TEST_F(FmtTest, anInvalidDateHasNoText)
{
    for (const auto format :
         {&Fmt::relative, &Fmt::since, &Fmt::dateTime, &Fmt::date, &Fmt::time, &Fmt::day}) {
        EXPECT_TEXT(format({}), "");
    }
}

TEST_F(FmtTest, sizesAreInDecimalUnits)
{
    EXPECT_TEXT(Fmt::byteCount(0), "Zero kB");
    EXPECT_TEXT(Fmt::byteCount(1), "1 byte");
    EXPECT_TEXT(Fmt::byteCount(999), "999 byte");
    EXPECT_TEXT(Fmt::byteCount(1'000), "1 kB");
    EXPECT_TEXT(Fmt::byteCount(1'500), "2 kB");
    EXPECT_TEXT(Fmt::byteCount(84'321), "84 kB");
    EXPECT_TEXT(Fmt::byteCount(999'499), "999 kB");
    EXPECT_TEXT(Fmt::byteCount(1'000'000), "1 MB");
    EXPECT_TEXT(Fmt::byteCount(1'234'567), "1,2 MB");
    EXPECT_TEXT(Fmt::byteCount(3'070'000'000), "3,07 GB");
    EXPECT_TEXT(Fmt::byteCount(1'500'000'000), "1,5 GB");
    EXPECT_TEXT(Fmt::byteCount(2'000'000'000'000), "2 TB");
    EXPECT_TEXT(Fmt::byteCount(1'250'000'000'000'000), "1,25 PB");
}

TEST_F(FmtTest, aSizeThatRoundsUpToAThousandTakesTheNextUnit)
{
    EXPECT_TEXT(Fmt::byteCount(999'500), "1 MB");
    EXPECT_TEXT(Fmt::byteCount(999'949'999), "999,9 MB");
    EXPECT_TEXT(Fmt::byteCount(999'950'000), "1 GB");
    EXPECT_TEXT(Fmt::byteCount(999'995'000'000), "1 TB");
}

TEST_F(FmtTest, extremeSizesHaveATextToo)
{
    EXPECT_TEXT(Fmt::byteCount(-1'234'567), "-1,2 MB");
    EXPECT_TEXT(Fmt::byteCount(std::numeric_limits<qint64>::max()), "9.223,37 PB");
    EXPECT_TEXT(Fmt::byteCount(std::numeric_limits<qint64>::min()), "-9.223,37 PB");
}

TEST_F(FmtTest, sizesInEnglish)
{
    Fmt::setLocalisations({QStringLiteral("en")});
    EXPECT_TEXT(Fmt::byteCount(0), "Zero kB");
    EXPECT_TEXT(Fmt::byteCount(1'234'567), "1.2 MB");
}

TEST_F(FmtTest, countsAreGrouped)
{
    EXPECT_TEXT(Fmt::number(0), "0");
    EXPECT_TEXT(Fmt::number(999), "999");
    EXPECT_TEXT(Fmt::number(1'234), "1.234");
    EXPECT_TEXT(Fmt::number(1'234'567), "1.234.567");
    EXPECT_TEXT(Fmt::number(-1'234), "-1.234");
    EXPECT_TEXT(Fmt::number(std::numeric_limits<qint64>::max()), "9.223.372.036.854.775.807");
}

} // namespace
