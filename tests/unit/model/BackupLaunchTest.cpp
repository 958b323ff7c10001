#include "platform/ExecutablePath.h"
#include "state/ConfigStore.h"
#include "state/StatusStore.h"
#include "tests/support/Files.h"
#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFile>

namespace {

using GatedAction = AppModel::GatedAction;
using std::chrono::milliseconds;

class BackupLaunch : public ModelFixture
{
protected:
    static QStringList command()
    {
        return {ownExecutablePath().value(), QStringLiteral("--backup"),
                QStringLiteral("--manual")};
    }

    static void writeFileInsteadOfTheFolder()
    {
        ASSERT_TRUE(QDir(Paths::support()).removeRecursively());
        ASSERT_TRUE(writeFile(Paths::support()));
    }

    static std::optional<QString> folderError(const QString &reason)
    {
        return QStringLiteral("Vellomar non può scrivere nella sua cartella "
                              "~/.local/share/Vellomar (%1): i backup non possono partire.")
            .arg(reason);
    }
};

TEST_F(BackupLaunch, startsThisVeryProgramWithoutItsWindow)
{
    start();
    const SignalCount busy(model->run(), &RunWatch::busyChanged);
    model->startBackup();
    settle();
    EXPECT_EQ(desktop->started, QList<QStringList>{command()});
    EXPECT_EQ(desktop->permissionRequests, 1);
    EXPECT_EQ(desktop->probes, 2);
    EXPECT_TRUE(model->run()->isLaunching());
    EXPECT_TRUE(model->run()->isBusy());
    EXPECT_EQ(busy.count(), 1);
}

TEST_F(BackupLaunch, theSettingsAreOnTheDiskBeforeIt)
{
    start();
    settle();
    std::optional<qint64> found;
    desktop->onStart = [&found] { found = ConfigStore::load().intervalHours; };
    change([](AppConfig &settings) { settings.intervalHours = 7; });
    ASSERT_NE(ConfigStore::load().intervalHours, 7);
    model->startBackup();
    settle();
    EXPECT_EQ(found, 7);
}

TEST_F(BackupLaunch, aSecondStartMeanwhileDoesNothing)
{
    start();
    model->startBackup();
    settle();
    model->startBackup();
    settle();
    model->access()->setRequest(GatedAction::Backup);
    model->continueWithoutAccess();
    settle();
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_EQ(desktop->permissionRequests, 1);
}

TEST_F(BackupLaunch, duringARunOfTheScheduleNothingStarts)
{
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    const int probes = desktop->probes;
    model->startBackup();
    settle();
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(desktop->probes, probes);
    EXPECT_FALSE(model->kit()->isShowing());
}

TEST_F(BackupLaunch, withoutASavedKeyTheKitComesFirst)
{
    config.keySaved = false;
    start();
    const int probes = desktop->probes;
    model->startBackup();
    settle();
    EXPECT_TRUE(model->kit()->isShowing());
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(desktop->probes, probes);
    EXPECT_EQ(model->access()->request(), GatedAction::None);
    EXPECT_TRUE(desktop->reasons.isEmpty());
}

TEST_F(BackupLaunch, withoutAccessTheSheetComesFirst)
{
    desktop->fullDiskAccess = false;
    start();
    EXPECT_FALSE(model->access()->isGranted());
    model->startBackup();
    settle();
    EXPECT_EQ(model->access()->request(), GatedAction::Backup);
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(desktop->permissionRequests, 0);
    model->continueWithoutAccess();
    settle();
    EXPECT_EQ(model->access()->request(), GatedAction::None);
    EXPECT_EQ(desktop->started, QList<QStringList>{command()});
    EXPECT_EQ(desktop->permissionRequests, 0);
}

TEST_F(BackupLaunch, accessIsLookedForAtEachStart)
{
    desktop->fullDiskAccess = false;
    start();
    const SignalCount changes(model->access(), &DiskAccess::grantedChanged);
    desktop->fullDiskAccess = true;
    tick();
    EXPECT_FALSE(model->access()->isGranted());
    model->startBackup();
    settle();
    EXPECT_TRUE(model->access()->isGranted());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(desktop->started.size(), 1);
}

TEST_F(BackupLaunch, whatIsFoundMissingOnlyAtTheStartIsReportedToo)
{
    start();
    settle();
    const SignalCount hindrances(model.get(), &AppModel::backupHindered);
    desktop->fullDiskAccess = false;
    model->startBackup();
    EXPECT_EQ(hindrances.count(), 0);
    settle();
    EXPECT_EQ(hindrances.count(), 1);
    EXPECT_FALSE(model->run()->isBusy());
    EXPECT_EQ(model->access()->request(), GatedAction::Backup);
    desktop->fullDiskAccess = true;
    writeFileInsteadOfTheFolder();
    model->startBackup();
    settle();
    EXPECT_EQ(hindrances.count(), 2);
    EXPECT_FALSE(model->run()->isBusy());
    EXPECT_TRUE(desktop->started.isEmpty());
}

TEST_F(BackupLaunch, theSheetIsForTheActionThatAskedLast)
{
    desktop->fullDiskAccess = false;
    start();
    model->startBackup();
    settle();
    model->measureSources();
    settle();
    EXPECT_EQ(model->access()->request(), GatedAction::Measure);
    model->startBackup();
    settle();
    EXPECT_EQ(model->access()->request(), GatedAction::Backup);
}

TEST_F(BackupLaunch, aProgramThatCannotBeStartedIsSilent)
{
    desktop->canStart = false;
    start();
    model->startBackup();
    settle();
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_FALSE(model->run()->isLaunching());
    EXPECT_EQ(model->run()->supportError(), std::nullopt);
}

TEST_F(BackupLaunch, aSupportFolderThatCannotBeWrittenIsReportedFromTheStart)
{
    writeFileInsteadOfTheFolder();
    model = std::make_unique<AppModel>(World::real(desktop));
    settle();
    EXPECT_EQ(model->run()->supportError(), folderError(QStringLiteral("non è una cartella")));
}

TEST_F(BackupLaunch, withASupportFolderThatCannotBeWrittenNothingStarts)
{
    start();
    settle(); // or a tool that is still starting would have its pipe in the removed folder
    EXPECT_EQ(model->run()->supportError(), std::nullopt);
    const SignalCount changes(model->run(), &RunWatch::supportErrorChanged);
    writeFileInsteadOfTheFolder();
    model->startBackup();
    settle();
    EXPECT_FALSE(model->run()->isLaunching());
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(model->run()->supportError(), folderError(QStringLiteral("non è una cartella")));
    EXPECT_EQ(changes.count(), 1);
    // Once repaired, that is seen at the next try and within a minute.
    ASSERT_TRUE(QFile::remove(Paths::support()));
    ASSERT_TRUE(QDir().mkdir(Paths::support()));
    clock.advance(std::chrono::minutes(1));
    tick();
    settle();
    EXPECT_EQ(model->run()->supportError(), std::nullopt);
    model->startBackup();
    settle();
    EXPECT_TRUE(model->run()->isLaunching());
}

TEST_F(BackupLaunch, aLaunchThatCameToNothingLooksAtTheSupportFolder)
{
    start();
    model->startBackup();
    settle();
    QFile::remove(supportFile("backup.lock"));
    ASSERT_TRUE(QDir().mkpath(supportFile("backup.lock")));
    desktop->pass(milliseconds(6000));
    settle();
    EXPECT_FALSE(model->run()->isLaunching());
    EXPECT_TRUE(model->run()->supportError());
}

TEST_F(BackupLaunch, anEngineThatShowsNoStatusIsGivenUpAfterSixSeconds)
{
    start();
    model->startBackup();
    settle();
    desktop->pass(milliseconds(5999));
    settle();
    tick();
    EXPECT_TRUE(model->run()->isBusy());
    desktop->pass(milliseconds(1));
    settle();
    EXPECT_FALSE(model->run()->isLaunching());
    EXPECT_FALSE(model->run()->isBusy());
    EXPECT_TRUE(model->run()->history().isEmpty());
    model->startBackup();
    settle();
    EXPECT_EQ(desktop->started.size(), 2);
}

TEST_F(BackupLaunch, aLiveStatusTakesOver)
{
    start();
    model->startBackup();
    settle();
    const SignalCount busy(model->run(), &RunWatch::busyChanged);
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    tick();
    EXPECT_FALSE(model->run()->isLaunching());
    EXPECT_TRUE(model->run()->isBusy());
    desktop->pass(milliseconds(6000));
    settle();
    EXPECT_TRUE(model->run()->isBusy());
    StatusStore::clear();
    tick();
    EXPECT_FALSE(model->run()->isBusy());
    // Busy from the launch to the end of the run, reported once.
    EXPECT_EQ(busy.count(), 1);
}

TEST_F(BackupLaunch, theTimeOfAnEarlierLaunchDoesNotEndALaterOne)
{
    start();
    model->startBackup();
    settle();
    EngineLookalike engine;
    leaveStatus(engine.pid());
    tick();
    StatusStore::clear();
    tick();
    desktop->pass(milliseconds(4000));
    settle();
    model->startBackup();
    settle();
    desktop->pass(milliseconds(2000));
    settle();
    EXPECT_TRUE(model->run()->isLaunching());
    desktop->pass(milliseconds(4000));
    settle();
    EXPECT_FALSE(model->run()->isLaunching());
}

TEST_F(BackupLaunch, aModelThatIsGoneIsLeftAloneByTheTimer)
{
    start();
    model->startBackup();
    settle();
    model.reset();
    desktop->pass(milliseconds(6000));
    settle();
    EXPECT_EQ(desktop->waitingTasks(), 0);
}

TEST_F(BackupLaunch, aStopIsAskedOfTheRunAndNothingElseChanges)
{
    EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    model->cancelBackup();
    EXPECT_TRUE(model->run()->isBusy());
    EXPECT_TRUE(engine.wasEndedBySignal());
    tick();
    EXPECT_FALSE(model->run()->isBusy());
}

TEST_F(BackupLaunch, aStopWithoutARunDoesNothing)
{
    start();
    model->startBackup();
    settle();
    model->cancelBackup();
    EXPECT_TRUE(model->run()->isLaunching());
    desktop->pass(milliseconds(6000));
    settle();
    model->cancelBackup();
    EXPECT_FALSE(model->run()->isBusy());
}

TEST_F(BackupLaunch, aStopNeverReachesAProgramOfAnotherName)
{
    EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    ASSERT_TRUE(model->run()->isBusy());
    // The run dies and its process id goes to a different process before the next look. As ids
    // can't be chosen, the test changes the file instead.
    EngineLookalike foreign(QStringLiteral("somebody-else"));
    engine.kill();
    leaveStatus(foreign.pid());
    model->cancelBackup();
    EXPECT_TRUE(foreign.isRunning());
    tick();
    EXPECT_FALSE(model->run()->isBusy());
    model->cancelBackup();
    EXPECT_TRUE(foreign.isRunning());
}

TEST_F(BackupLaunch, aRelaunchStartsThisProgramAgainAndEndsIt)
{
    start();
    model->access()->setRequest(GatedAction::Backup);
    model->relaunch();
    settle();
    EXPECT_EQ(desktop->started,
              QList<QStringList>({QStringList{QStringLiteral("/bin/sh"), QStringLiteral("-c"),
                                              QStringLiteral("sleep 1; exec \"$0\""),
                                              ownExecutablePath().value()}}));
    EXPECT_EQ(model->access()->request(), GatedAction::None);
    desktop->pass(milliseconds(199));
    settle();
    EXPECT_EQ(desktop->quits, 0);
    desktop->pass(milliseconds(1));
    settle();
    EXPECT_EQ(desktop->quits, 1);
    desktop->pass(milliseconds(499));
    settle();
    EXPECT_EQ(desktop->exits, 0);
    desktop->pass(milliseconds(1));
    settle();
    EXPECT_EQ(desktop->exits, 1);
}

TEST_F(BackupLaunch, aRelaunchThatCannotStartAShellStillQuits)
{
    desktop->canStart = false;
    start();
    model->relaunch();
    settle();
    model.reset();
    desktop->pass(milliseconds(700));
    settle();
    EXPECT_EQ(desktop->quits, 1);
    EXPECT_EQ(desktop->exits, 1);
}

} // namespace
