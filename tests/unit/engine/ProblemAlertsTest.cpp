#include "engine/ProblemAlerts.h"

#include "state/StatusStore.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

class ProblemAlertsTest : public testing::Test
{
protected:
    /// Reports the records of a cycle that has put them into the history, as each does.
    void report(const QList<RunRecord> &records)
    {
        for (const RunRecord &record : records) {
            StatusStore::append(record);
        }
        ProblemAlerts(alertAfterHours, [this](const QString &title, const QString &body) {
            notifications.append({title, body});
        }).report(records);
    }

    static RunRecord ended(DestinationID destination, Outcome outcome, const char *message)
    {
        RunRecord record = RunRecord::starting(destination);
        record.outcome = outcome;
        record.message = QString::fromUtf8(message);
        return record;
    }
    static RunRecord good(DestinationID destination = DestinationID::Local)
    {
        return ended(destination, Outcome::Ok, "Completato");
    }
    static RunRecord failed(DestinationID destination = DestinationID::Local)
    {
        return ended(destination, Outcome::Failed, "Fatal: no room");
    }
    static RunRecord skipped(DestinationID destination = DestinationID::Local)
    {
        return ended(destination, Outcome::Skipped, "Disco non collegato");
    }

    /// Puts a record into the history that is so old now.
    void remember(Outcome outcome, std::chrono::minutes age,
                  const std::optional<QString> &kind = std::nullopt)
    {
        RunRecord record = RunRecord::starting(DestinationID::Drive);
        record.date = clock.moment().addMSecs(-std::chrono::milliseconds(age).count());
        record.outcome = outcome;
        record.kind = kind;
        StatusStore::append(record);
    }

    static std::optional<QDateTime> lastAlert() { return StatusStore::loadState().lastAlert; }

    static void setLastAlert(const QDateTime &date)
    {
        EngineState state = StatusStore::loadState();
        state.lastAlert = date;
        StatusStore::save(state);
    }

    QString onlyTitle()
    {
        EXPECT_EQ(notifications.size(), 1);
        return notifications.value(0).first;
    }

    ManualClock clock;
    ScopedClock clockInForce{clock};
    qint64 alertAfterHours = 0;
    QList<std::pair<QString, QString>> notifications; ///< titles and bodies
};

TEST_F(ProblemAlertsTest, aFailureIsReportedWithItsDestinationAndReason)
{
    report({failed()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non riuscito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Fatal: no room"));
    EXPECT_EQ(lastAlert(), clock.moment());
}

TEST_F(ProblemAlertsTest, aGoodCycleIsNotReported)
{
    report({good(), good(DestinationID::Drive)});
    EXPECT_TRUE(notifications.isEmpty());
    EXPECT_EQ(lastAlert(), std::nullopt);
}

TEST_F(ProblemAlertsTest, aNegativeLimitTurnsThemOff)
{
    alertAfterHours = -1;
    report({failed()});
    report({skipped()});
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlertsTest, thereIsOneADayAtMost)
{
    report({failed()});
    clock.advance(24h);
    report({failed()});
    EXPECT_EQ(notifications.size(), 1) << "exactly a day later";
    clock.advance(1s);
    report({failed()});
    EXPECT_EQ(notifications.size(), 2);
}

TEST_F(ProblemAlertsTest, anAlertUpToADayAheadSilencesThem)
{
    setLastAlert(clock.moment().addDays(1));
    report({failed()});
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlertsTest, anAlertMoreThanADayAheadCountsAsNone)
{
    setLastAlert(clock.moment().addDays(1).addSecs(1));
    report({failed()});
    EXPECT_EQ(notifications.size(), 1);
    EXPECT_EQ(lastAlert(), clock.moment());
}

TEST_F(ProblemAlertsTest, aGoodBackupMoreThanADayAheadIsNotTheLastOne)
{
    remember(Outcome::Ok, 72h);
    remember(Outcome::Ok, -25h);
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 3 giorni"));
}

TEST_F(ProblemAlertsTest, aGoodBackupDoesNotEndTheSilence)
{
    report({failed()});
    report({good()});
    EXPECT_NE(lastAlert(), std::nullopt);
    report({failed()});
    EXPECT_EQ(notifications.size(), 1);
}

TEST_F(ProblemAlertsTest, aFailureIsReportedThoughADifferentDestinationWorked)
{
    report({good(), failed(DestinationID::Drive)});
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Google Drive: Fatal: no room"));
}

TEST_F(ProblemAlertsTest, ofSeveralFailuresTheFirstIsReported)
{
    report({skipped(DestinationID::Server), failed(), failed(DestinationID::Drive)});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non riuscito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Fatal: no room"));
}

TEST_F(ProblemAlertsTest, ofSeveralSkipsTheFirstIsReported)
{
    report({skipped(), skipped(DestinationID::Drive), skipped(DestinationID::Server)});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Disco non collegato"));
}

TEST_F(ProblemAlertsTest, aSkipIsNotReportedWhileADifferentDestinationWorks)
{
    report({skipped(), good(DestinationID::Drive)});
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlertsTest, skipsWithoutAnyHistoryAreReportedImmediatelyOnlyWithALimitOfZero)
{
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Disco non collegato"));
}

TEST_F(ProblemAlertsTest, skipsWithoutAnyHistoryWaitForTheLimit)
{
    alertAfterHours = 1;
    report({skipped()});
    EXPECT_TRUE(notifications.isEmpty());
    EXPECT_EQ(lastAlert(), std::nullopt);
}

TEST_F(ProblemAlertsTest, theAgeCountsInHoursUpToFortySeven)
{
    remember(Outcome::Ok, 47h + 59min);
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 47 ore"));
}

TEST_F(ProblemAlertsTest, theAgeCountsInDaysFromFortyEight)
{
    remember(Outcome::Warning, 48h);
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 2 giorni"));
}

TEST_F(ProblemAlertsTest, lessThanAnHourIsReportedAsOne)
{
    remember(Outcome::Ok, 30min);
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 1 ore"));
}

TEST_F(ProblemAlertsTest, theLimitItselfIsEnough)
{
    alertAfterHours = 24;
    remember(Outcome::Ok, 23h + 59min);
    report({skipped()});
    EXPECT_TRUE(notifications.isEmpty());
    clock.advance(1min);
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 24 ore"));
}

TEST_F(ProblemAlertsTest, theNewestGoodBackupOfAnyDestinationCounts)
{
    remember(Outcome::Ok, 100h);
    remember(Outcome::Ok, 5h);
    remember(Outcome::Failed, 1h);
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 5 ore"));
}

TEST_F(ProblemAlertsTest, withoutAGoodBackupTheOldestEntryGivesTheAge)
{
    alertAfterHours = 30;
    remember(Outcome::Failed, 30h);
    remember(Outcome::Failed, 2h);
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
}

TEST_F(ProblemAlertsTest, aCheckIsNoBackup)
{
    alertAfterHours = 3;
    remember(Outcome::Failed, 4h);
    remember(Outcome::Ok, 1h, QStringLiteral("check"));
    report({skipped()});
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
}

} // namespace
