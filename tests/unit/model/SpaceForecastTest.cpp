#include "model/SpaceForecast.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr qint64 hour = 3600;
constexpr qint64 day = 24 * hour;
constexpr qint64 mega = 1'000'000;
constexpr qint64 giga = 1'000 * mega;

class SpaceForecastOf : public testing::Test
{
protected:
    SpaceForecast space;

    SpaceForecastOf()
    {
        space.now = QDateTime(QDate(2026, 3, 31), QTime(12, 0), Qt::UTC);
        space.config.sources = {QStringLiteral("/home/io"), QStringLiteral("/srv")};
    }

    /// Adds a run that is older than all others.
    void ran(qint64 secondsAgo, qint64 added, Outcome outcome = Outcome::Ok,
             DestinationID destination = DestinationID::Local)
    {
        RunRecord record;
        record.date = space.now.addSecs(-secondsAgo);
        record.destination = destination;
        record.outcome = outcome;
        record.dataAdded = added;
        space.history.append(record);
    }

    void hasVersions(qint64 size)
    {
        space.repos[DestinationID::Local] = {
            .snapshots = {Snap()}, .size = size, .error = {}, .loading = false};
    }

    /// Versions that grow by so many bytes a day.
    void grows(qint64 bytes)
    {
        hasVersions(1000 * giga);
        ran(10 * day, 10 * bytes);
    }

    void expect(const char *text, bool isWarning)
    {
        const std::optional<Notice> line = space.forecast(DestinationID::Local);
        ASSERT_TRUE(line);
        QString found = line->text;
        EXPECT_EQ(found.replace(QChar(0x00a0), u' '), QString::fromUtf8(text));
        EXPECT_EQ(line->warning, isWarning) << text;
    }

    [[nodiscard]] std::optional<double> growth() const
    {
        return space.growthPerDay(DestinationID::Local);
    }
};

TEST_F(SpaceForecastOf, theFreeSpaceIsThatOfTheDiskOrWhatTheQuotaLeaves)
{
    for (const DestinationID destination : allDestinations) {
        EXPECT_EQ(space.freeSpace(destination), std::nullopt);
    }
    space.localFree = 5;
    space.driveQuota = Rclone::Quota{.used = 30, .total = 100};
    space.serverQuota = Rclone::Quota{.used = 30, .total = 20};
    EXPECT_EQ(space.freeSpace(DestinationID::Local), 5);
    EXPECT_EQ(space.freeSpace(DestinationID::Drive), 70);
    EXPECT_EQ(space.freeSpace(DestinationID::Server), 0);
    space.driveQuota->used = std::numeric_limits<qint64>::min();
    EXPECT_EQ(space.freeSpace(DestinationID::Drive), 100);
}

TEST_F(SpaceForecastOf, theSourcesHaveATotalOnceEachHasBeenMeasured)
{
    EXPECT_EQ(space.sourceTotal(), std::nullopt);
    space.sourceSizes = {{QStringLiteral("/home/io"), 7}, {QStringLiteral("/other"), 100}};
    EXPECT_EQ(space.sourceTotal(), std::nullopt);
    space.sourceSizes[QStringLiteral("/srv")] = 0;
    EXPECT_EQ(space.sourceTotal(), 7);
    space.config.sources.clear();
    EXPECT_EQ(space.sourceTotal(), std::nullopt);
}

TEST_F(SpaceForecastOf, growthNeedsAGoodRunThatIsADayOld)
{
    EXPECT_EQ(growth(), std::nullopt);
    ran(5 * day, mega, Outcome::Failed);
    ran(6 * day, mega, Outcome::Skipped);
    ran(7 * day, mega, Outcome::Cancelled);
    ran(8 * day, mega, Outcome::Ok, DestinationID::Drive);
    EXPECT_EQ(growth(), std::nullopt);
    space.history.clear();
    ran(23 * hour, mega);
    EXPECT_EQ(growth(), std::nullopt);
    hasVersions(giga);
    expect("La previsione di crescita arriva dopo qualche giorno di backup.", false);
    space.history.clear();
    ran(day, mega, Outcome::Warning);
    EXPECT_EQ(growth(), mega);
}

TEST_F(SpaceForecastOf, growthIsTheAverageOfThirtyDays)
{
    ran(day, 4);
    ran(2 * day, 2);
    ran(4 * day, 2);
    EXPECT_EQ(growth(), 2.0);
    ran(30 * day, 1000);
    EXPECT_EQ(growth(), 2.0); // not after the start of the period
    ran(30 * day - 1, 52);
    EXPECT_NEAR(*growth(), 2.0, 0.001);
}

TEST_F(SpaceForecastOf, aVerificationCountsAsARun)
{
    ran(2 * day, 10);
    ran(4 * day, 0);
    space.history.last().kind = QStringLiteral("check");
    EXPECT_EQ(growth(), 2.5);
}

TEST_F(SpaceForecastOf, aRunThatAddedHalfOfTheRepositoryIsLeftOut)
{
    hasVersions(10 * giga);
    for (int run = 0; run < 10; ++run) {
        ran(run * day + hour, 100 * mega);
    }
    ran(10 * day, 9900 * mega);
    EXPECT_EQ(growth(), static_cast<double>(giga) / 10);
    space.history.clear();
    ran(day, 5 * giga);
    EXPECT_EQ(growth(), 0.0);
    ran(2 * day, 5 * giga - 1);
    EXPECT_EQ(growth(), (5.0 * giga - 1) / 2);
    space.repos.clear();
    EXPECT_EQ(growth(), (10.0 * giga - 1) / 2);
}

TEST_F(SpaceForecastOf, theProjectionIsThatOfTheLargestRepository)
{
    grows(mega);
    EXPECT_EQ(space.measuredProjection(), 1000 * giga + 730 * mega);
    space.config.keepDays = 0;
    EXPECT_EQ(space.measuredProjection(), 1000 * giga + 1825 * mega);
    space.config.keepDays = 7;
    space.repos[DestinationID::Drive].size = 2000 * giga;
    EXPECT_EQ(space.measuredProjection(), 1000 * giga + 7 * mega); // no growth of Drive's is known
    ran(2 * day, 2, Outcome::Ok, DestinationID::Drive);
    EXPECT_EQ(space.measuredProjection(), 2000 * giga + 7);
    space.repos[DestinationID::Drive].size.reset();
    EXPECT_EQ(space.measuredProjection(), 1000 * giga + 7 * mega);
    space.config.keepDays = -1;
    EXPECT_EQ(space.measuredProjection(), std::nullopt);
    space.config.keepDays = std::numeric_limits<qint64>::max();
    EXPECT_EQ(space.measuredProjection(), std::numeric_limits<qint64>::max());
    space.history.clear();
    EXPECT_EQ(space.measuredProjection(), std::nullopt);
}

TEST_F(SpaceForecastOf, growthBelowAMegabyteADayIsNegligible)
{
    grows(mega - 1);
    expect("Crescita trascurabile negli ultimi giorni.", false);
    space.history.clear();
    grows(mega);
    expect("Cresce di circa 1 MB al giorno.", false);
}

TEST_F(SpaceForecastOf, theDaysLeftAreSaidInDaysMonthsOrYears)
{
    grows(10 * mega);
    struct Case
    {
        double days;
        const char *text;
        bool isWarning;
    };
    for (const Case &expected :
         {Case{0, "Cresce di circa 10 MB al giorno. Lo spazio libero basta per circa 0 giorni.",
               true},
          Case{1.9, "Cresce di circa 10 MB al giorno. Lo spazio libero basta per circa 1 giorni.",
               true},
          Case{59.9, "Cresce di circa 10 MB al giorno. Lo spazio libero basta per circa 59 giorni.",
               true},
          Case{60, "Cresce di circa 10 MB al giorno. Lo spazio libero basta per circa 2 mesi.",
               false},
          Case{729, "Cresce di circa 10 MB al giorno. Lo spazio libero basta per circa 24 mesi.",
               false},
          Case{730, "Cresce di circa 10 MB al giorno. Lo spazio libero basta per circa 2 anni.",
               false}}) {
        space.localFree = static_cast<qint64>(expected.days * 10 * static_cast<double>(mega));
        expect(expected.text, expected.isWarning);
    }
    space.localFree = std::numeric_limits<qint64>::max();
    expect("Cresce di circa 10 MB al giorno. Lo spazio libero basta per circa 2526951242 anni.",
           false);
}

TEST_F(SpaceForecastOf, beforeTheFirstBackupTheSourcesAreComparedWithTheFreeSpace)
{
    EXPECT_EQ(space.forecast(DestinationID::Local), std::nullopt);
    space.sourceSizes = {{QStringLiteral("/home/io"), 3 * giga}, {QStringLiteral("/srv"), giga}};
    EXPECT_EQ(space.forecast(DestinationID::Local), std::nullopt);
    space.localFree = 6 * giga;
    expect("Spazio sufficiente: dopo il primo backup restano circa 2 GB liberi.", false);
    space.repos[DestinationID::Local] = {}; // read, and empty
    expect("Spazio sufficiente: dopo il primo backup restano circa 2 GB liberi.", false);
    space.localFree = 4 * giga;
    expect("Spazio sufficiente: dopo il primo backup restano circa Zero kB liberi.", false);
    space.localFree = giga;
    expect("Spazio insufficiente: mancano 3 GB.", true);
    ran(10 * day, mega);
    space.sourceSizes.remove(QStringLiteral("/srv"));
    EXPECT_EQ(space.forecast(DestinationID::Local), std::nullopt);
    hasVersions(100 * giga);
    expect("Crescita trascurabile negli ultimi giorni.", false);
}

} // namespace
