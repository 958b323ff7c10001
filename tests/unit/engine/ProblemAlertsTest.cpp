#include "tests/support/EngineFixture.h"

#include "state/StatusStore.h"

namespace {

using namespace std::chrono_literals;

class ProblemAlerts : public EngineFixture
{
protected:
    ProblemAlerts() { config.alertAfterHours = 0; }

    void detachDisk() { config.localFolder = QStringLiteral("/nonexistent/disk"); }

    void failBackups() { tools.backup = ScriptedTools::ended(1, QStringLiteral("Fatal: no room")); }

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
};

TEST_F(ProblemAlerts, aFailureIsToldWithItsDestinationAndReason)
{
    failBackups();
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non riuscito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Fatal: no room"));
    EXPECT_EQ(lastAlert(), clock.moment());
}

TEST_F(ProblemAlerts, aGoodCycleTellsNothing)
{
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(notifications.isEmpty());
    EXPECT_EQ(lastAlert(), std::nullopt);
}

TEST_F(ProblemAlerts, aNegativeLimitTurnsThemOff)
{
    config.alertAfterHours = -1;
    failBackups();
    EXPECT_EQ(run(), 1);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlerts, thereIsOneADayAtMost)
{
    failBackups();
    EXPECT_EQ(run(), 1);
    clock.advance(24h);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(notifications.size(), 1) << "exactly a day later";
    clock.advance(1s);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(notifications.size(), 2);
}

TEST_F(ProblemAlerts, anAlertUpToADayAheadSilencesThem)
{
    setLastAlert(clock.moment().addDays(1));
    failBackups();
    EXPECT_EQ(run(), 1);
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlerts, anAlertMoreThanADayAheadCountsAsNone)
{
    setLastAlert(clock.moment().addDays(1).addSecs(1));
    failBackups();
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(notifications.size(), 1);
    EXPECT_EQ(lastAlert(), clock.moment());
}

TEST_F(ProblemAlerts, aGoodBackupMoreThanADayAheadIsNotTheLastOne)
{
    remember(Outcome::Ok, 72h);
    remember(Outcome::Ok, -25h);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 3 giorni"));
}

TEST_F(ProblemAlerts, aGoodBackupDoesNotEndTheSilence)
{
    failBackups();
    EXPECT_EQ(run(), 1);
    tools.backup = ScriptedTools::ended(0);
    EXPECT_EQ(run(), 0);
    EXPECT_NE(lastAlert(), std::nullopt);
    failBackups();
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(notifications.size(), 1);
}

TEST_F(ProblemAlerts, aFailureIsToldThoughAnotherDestinationWorked)
{
    useAllDestinations();
    config.serverEnabled = false;
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            const bool isDrive = call.repository().startsWith(QLatin1String("rclone:"));
            tools.backup = ScriptedTools::ended(isDrive ? 1 : 0, QStringLiteral("Fatal: gone"));
        }
    };
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Google Drive: Fatal: gone"));
}

TEST_F(ProblemAlerts, ofSeveralFailuresTheFirstIsTold)
{
    useAllDestinations();
    failBackups();
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non riuscito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Fatal: no room"));
}

TEST_F(ProblemAlerts, ofSeveralSkipsTheFirstIsTold)
{
    useAllDestinations();
    tools.dump.standardOutput = QStringLiteral("{}");
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(),
              (QStringList{QStringLiteral("local skipped"), QStringLiteral("drive skipped"),
                           QStringLiteral("server skipped")}));
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Disco non collegato"));
}

TEST_F(ProblemAlerts, aSkipIsNotToldWhileAnotherDestinationWorks)
{
    useAllDestinations();
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlerts, skipsWithoutAnyHistoryAreToldImmediatelyOnlyWithALimitOfZero)
{
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
    EXPECT_EQ(notifications.value(0).second, QStringLiteral("Disco esterno: Disco non collegato"));
}

TEST_F(ProblemAlerts, skipsWithoutAnyHistoryWaitForTheLimit)
{
    config.alertAfterHours = 1;
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(notifications.isEmpty());
    EXPECT_EQ(lastAlert(), std::nullopt);
}

TEST_F(ProblemAlerts, theAgeCountsInHoursUpToFortySeven)
{
    remember(Outcome::Ok, 47h + 59min);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 47 ore"));
}

TEST_F(ProblemAlerts, theAgeCountsInDaysFromFortyEight)
{
    remember(Outcome::Warning, 48h);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 2 giorni"));
}

TEST_F(ProblemAlerts, lessThanAnHourIsToldAsOne)
{
    remember(Outcome::Ok, 30min);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 1 ore"));
}

TEST_F(ProblemAlerts, theLimitItselfIsEnough)
{
    config.alertAfterHours = 24;
    remember(Outcome::Ok, 23h + 59min);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(notifications.isEmpty());
    clock.advance(1min);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 24 ore"));
}

TEST_F(ProblemAlerts, theNewestGoodBackupOfAnyDestinationCounts)
{
    remember(Outcome::Ok, 100h);
    remember(Outcome::Ok, 5h);
    remember(Outcome::Failed, 1h);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Nessun backup da 5 ore"));
}

TEST_F(ProblemAlerts, withoutAGoodBackupTheOldestEntryGivesTheAge)
{
    config.alertAfterHours = 30;
    remember(Outcome::Failed, 30h);
    remember(Outcome::Failed, 2h);
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
}

TEST_F(ProblemAlerts, aCheckIsNoBackup)
{
    config.alertAfterHours = 3;
    remember(Outcome::Failed, 4h);
    remember(Outcome::Ok, 1h, QStringLiteral("check"));
    detachDisk();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Backup non eseguito"));
}

TEST_F(ProblemAlerts, aStoppedCycleIsNoProblem)
{
    useAllDestinations();
    detachDisk();
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            handle->terminate();
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(),
              (QStringList{QStringLiteral("local skipped"), QStringLiteral("drive cancelled")}));
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlerts, theGatesBeforeTheDestinationsTellNothing)
{
    secrets.items.clear();
    EXPECT_EQ(run(), 1);
    config.skipOnBattery = true;
    onBattery = true;
    EXPECT_EQ(run(false), 0);
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(ProblemAlerts, aFailedCheckIsNoneOfTheirBusiness)
{
    EngineState state = StatusStore::loadState();
    state.lastCheck.clear();
    state.lastAlert = clock.moment();
    StatusStore::save(state);
    tools.check = ScriptedTools::ended(1);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyTitle(), QStringLiteral("Verifica del backup non riuscita"));
    EXPECT_EQ(lastAlert(), clock.moment());
}

} // namespace
