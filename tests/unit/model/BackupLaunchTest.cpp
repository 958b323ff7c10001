#include "platform/ExecutablePath.h"
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
    const SignalCount busy(model.get(), &AppModel::busyChanged);
    model->startBackup();
    EXPECT_EQ(desktop->started, QList<QStringList>{command()});
    EXPECT_EQ(desktop->permissionRequests, 1);
    EXPECT_EQ(desktop->probes, 2);
    EXPECT_TRUE(model->isLaunching());
    EXPECT_TRUE(model->isBusy());
    EXPECT_EQ(busy.count(), 1);
}

TEST_F(BackupLaunch, aSecondStartMeanwhileDoesNothing)
{
    start();
    model->startBackup();
    model->startBackup();
    model->setAccessRequest(GatedAction::Backup);
    model->continueWithoutAccess();
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
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(desktop->probes, probes);
    EXPECT_FALSE(model->isShowingRecoveryKit());
}

TEST_F(BackupLaunch, withoutASavedKeyTheKitComesFirst)
{
    config.keySaved = false;
    start();
    const int probes = desktop->probes;
    model->startBackup();
    EXPECT_TRUE(model->isShowingRecoveryKit());
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(desktop->probes, probes);
    EXPECT_EQ(model->accessRequest(), GatedAction::None);
    EXPECT_TRUE(desktop->reasons.isEmpty());
}

TEST_F(BackupLaunch, withoutAccessTheSheetComesFirst)
{
    desktop->fullDiskAccess = false;
    start();
    EXPECT_FALSE(model->hasFullDiskAccess());
    model->startBackup();
    EXPECT_EQ(model->accessRequest(), GatedAction::Backup);
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(desktop->permissionRequests, 0);
    model->continueWithoutAccess();
    EXPECT_EQ(model->accessRequest(), GatedAction::None);
    EXPECT_EQ(desktop->started, QList<QStringList>{command()});
    EXPECT_EQ(desktop->permissionRequests, 0);
}

TEST_F(BackupLaunch, accessIsLookedForAtEachStart)
{
    desktop->fullDiskAccess = false;
    start();
    const SignalCount told(model.get(), &AppModel::fullDiskAccessChanged);
    desktop->fullDiskAccess = true;
    tick();
    EXPECT_FALSE(model->hasFullDiskAccess());
    model->startBackup();
    EXPECT_TRUE(model->hasFullDiskAccess());
    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(desktop->started.size(), 1);
}

TEST_F(BackupLaunch, theSheetIsForTheActionThatAskedLast)
{
    desktop->fullDiskAccess = false;
    start();
    model->startBackup();
    model->measureSources();
    EXPECT_EQ(model->accessRequest(), GatedAction::Measure);
    model->startBackup();
    EXPECT_EQ(model->accessRequest(), GatedAction::Backup);
}

TEST_F(BackupLaunch, aProgramThatCannotBeStartedIsSilent)
{
    desktop->canStart = false;
    start();
    model->startBackup();
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_FALSE(model->isLaunching());
    EXPECT_EQ(desktop->waitingTasks(), 0);
}

TEST_F(BackupLaunch, aSupportFolderThatCannotBeWrittenIsReportedFromTheStart)
{
    writeFileInsteadOfTheFolder();
    model = std::make_unique<AppModel>(desktop);
    EXPECT_EQ(model->supportError(), folderError(QStringLiteral("non è una cartella")));
}

TEST_F(BackupLaunch, withASupportFolderThatCannotBeWrittenNothingStarts)
{
    start();
    settle(); // or a tool that still starts would have its pipe in the folder that goes
    EXPECT_EQ(model->supportError(), std::nullopt);
    const SignalCount told(model.get(), &AppModel::supportErrorChanged);
    writeFileInsteadOfTheFolder();
    model->startBackup();
    EXPECT_FALSE(model->isLaunching());
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(model->supportError(), folderError(QStringLiteral("non è una cartella")));
    EXPECT_EQ(told.count(), 1);
    // Put in order, it is seen at the next try and within a minute.
    ASSERT_TRUE(QFile::remove(Paths::support()));
    ASSERT_TRUE(QDir().mkdir(Paths::support()));
    clock.advance(std::chrono::minutes(1));
    tick();
    EXPECT_EQ(model->supportError(), std::nullopt);
    model->startBackup();
    EXPECT_TRUE(model->isLaunching());
}

TEST_F(BackupLaunch, aLaunchThatCameToNothingLooksAtTheSupportFolder)
{
    start();
    model->startBackup();
    QFile::remove(supportFile("backup.lock"));
    ASSERT_TRUE(QDir().mkpath(supportFile("backup.lock")));
    desktop->pass(milliseconds(6000));
    EXPECT_FALSE(model->isLaunching());
    EXPECT_TRUE(model->supportError());
}

TEST_F(BackupLaunch, anEngineThatShowsNoStatusIsGivenUpAfterSixSeconds)
{
    start();
    model->startBackup();
    desktop->pass(milliseconds(5999));
    tick();
    EXPECT_TRUE(model->isBusy());
    desktop->pass(milliseconds(1));
    EXPECT_FALSE(model->isLaunching());
    EXPECT_FALSE(model->isBusy());
    EXPECT_TRUE(model->history().isEmpty());
    model->startBackup();
    EXPECT_EQ(desktop->started.size(), 2);
}

TEST_F(BackupLaunch, aLiveStatusTakesOver)
{
    start();
    model->startBackup();
    const SignalCount busy(model.get(), &AppModel::busyChanged);
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    tick();
    EXPECT_FALSE(model->isLaunching());
    EXPECT_TRUE(model->isBusy());
    desktop->pass(milliseconds(6000));
    EXPECT_TRUE(model->isBusy());
    StatusStore::clear();
    tick();
    EXPECT_FALSE(model->isBusy());
    // Busy from the launch to the end of the run, reported once.
    EXPECT_EQ(busy.count(), 1);
}

TEST_F(BackupLaunch, theTimeOfAnEarlierLaunchDoesNotEndALaterOne)
{
    start();
    model->startBackup();
    EngineLookalike engine;
    leaveStatus(engine.pid());
    tick();
    StatusStore::clear();
    tick();
    desktop->pass(milliseconds(4000));
    model->startBackup();
    desktop->pass(milliseconds(2000));
    EXPECT_TRUE(model->isLaunching());
    desktop->pass(milliseconds(4000));
    EXPECT_FALSE(model->isLaunching());
}

TEST_F(BackupLaunch, aModelThatIsGoneIsLeftAloneByTheTimer)
{
    start();
    model->startBackup();
    model.reset();
    desktop->pass(milliseconds(6000));
    EXPECT_EQ(desktop->waitingTasks(), 0);
}

TEST_F(BackupLaunch, aStopIsAskedOfTheRunAndNothingElseChanges)
{
    EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    model->cancelBackup();
    EXPECT_TRUE(model->isBusy());
    EXPECT_TRUE(engine.wasEndedBySignal());
    tick();
    EXPECT_FALSE(model->isBusy());
}

TEST_F(BackupLaunch, aStopWithoutARunDoesNothing)
{
    start();
    model->startBackup();
    model->cancelBackup();
    EXPECT_TRUE(model->isLaunching());
    desktop->pass(milliseconds(6000));
    model->cancelBackup();
    EXPECT_FALSE(model->isBusy());
}

TEST_F(BackupLaunch, aStopNeverReachesAProgramOfAnotherName)
{
    EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    ASSERT_TRUE(model->isBusy());
    // The run dies and its process id is given to another process before the next look; as ids
    // can't be chosen, what changes here is the file.
    EngineLookalike foreign(QStringLiteral("somebody-else"));
    engine.kill();
    leaveStatus(foreign.pid());
    model->cancelBackup();
    EXPECT_TRUE(foreign.isRunning());
    tick();
    EXPECT_FALSE(model->isBusy());
    model->cancelBackup();
    EXPECT_TRUE(foreign.isRunning());
}

TEST_F(BackupLaunch, aRelaunchStartsThisProgramAgainAndEndsIt)
{
    start();
    model->setAccessRequest(GatedAction::Backup);
    model->relaunch();
    EXPECT_EQ(desktop->started,
              QList<QStringList>({QStringList{QStringLiteral("/bin/sh"), QStringLiteral("-c"),
                                              QStringLiteral("sleep 1; exec \"$0\""),
                                              ownExecutablePath().value()}}));
    EXPECT_EQ(model->accessRequest(), GatedAction::None);
    desktop->pass(milliseconds(199));
    EXPECT_EQ(desktop->quits, 0);
    desktop->pass(milliseconds(1));
    EXPECT_EQ(desktop->quits, 1);
    desktop->pass(milliseconds(499));
    EXPECT_EQ(desktop->exits, 0);
    desktop->pass(milliseconds(1));
    EXPECT_EQ(desktop->exits, 1);
}

TEST_F(BackupLaunch, aRelaunchThatCannotStartAShellStillQuits)
{
    desktop->canStart = false;
    start();
    model->relaunch();
    model.reset();
    desktop->pass(milliseconds(700));
    EXPECT_EQ(desktop->quits, 1);
    EXPECT_EQ(desktop->exits, 1);
}

} // namespace
