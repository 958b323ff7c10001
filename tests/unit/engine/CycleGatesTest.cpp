#include "tests/support/EngineFixture.h"

#include "engine/CycleLock.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tests/support/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <sys/stat.h>

namespace {

class CycleGates : public EngineFixture
{
protected:
    CycleGates() { writeSupportFile("status.json", "left by a dead run"); }

    static void expectNoRecord()
    {
        EXPECT_FALSE(content("history.json"));
        EXPECT_FALSE(content("backup.log"));
    }

    /// A record that a gate makes up on the spot.
    void expectGateRecord(DestinationID destination, Outcome outcome, const QString &message) const
    {
        const RunRecord record = onlyRecord();
        EXPECT_FALSE(record.id.isNull());
        EXPECT_EQ(record.date, clock.moment());
        EXPECT_EQ(record.destination, destination);
        EXPECT_EQ(record.outcome, outcome);
        EXPECT_EQ(record.message, message);
        EXPECT_EQ(record.filesNew, 0);
        EXPECT_EQ(record.filesChanged, 0);
        EXPECT_EQ(record.dataAdded, 0);
        EXPECT_EQ(record.duration, 0);
        EXPECT_FALSE(record.kind);
        const QByteArray line = "2026-03-01T10:00:00Z [" + rawValue(destination).toUtf8() + "] " +
                                rawValue(outcome).toUtf8() + ": " + message.toUtf8() + '\n';
        EXPECT_EQ(content("backup.log"), line);
    }

    /// What every way out but the two at the lock leaves behind.
    static void expectEnded()
    {
        EXPECT_FALSE(content("status.json"));
        EXPECT_TRUE(CycleLock::acquire().has_value());
    }
};

const QString onBatteryText = QStringLiteral("Rimandato: il Mac è alimentato a batteria");

TEST_F(CycleGates, aHeldLockEndsTheCycleWithoutAWord)
{
    const auto other = CycleLock::acquire();
    ASSERT_TRUE(other.has_value());
    testing::internal::CaptureStderr();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(CycleLock::fault(), std::nullopt);
    EXPECT_EQ(content("status.json"), "left by a dead run");
    expectNoRecord();
    EXPECT_TRUE(tools.calls.isEmpty());
    EXPECT_EQ(secrets.reads, 0);
}

TEST_F(CycleGates, aLockFileThatCannotBeOpenedEndsTheCycleWithOneLineOfReason)
{
    ASSERT_TRUE(QDir().mkdir(supportFile("backup.lock")));
    testing::internal::CaptureStderr();
    EXPECT_EQ(run(), 0);
    const QString reason = qt_error_string(EISDIR);
    EXPECT_EQ(QString::fromStdString(testing::internal::GetCapturedStderr()),
              QStringLiteral("Vellomar: impossibile scrivere nella cartella %1 (%2)\n")
                  .arg(Paths::support(), reason));
    EXPECT_EQ(CycleLock::fault(), reason);
    EXPECT_EQ(content("status.json"), "left by a dead run");
    expectNoRecord();
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(CycleGates, aFolderInWhichNoFileCanBeMadeIsAFaultThoughItsLockCanBeOpened)
{
    ASSERT_TRUE(CycleLock::acquire().has_value());
    ASSERT_TRUE(becomeOrdinaryUser());
    const QByteArray support = QFile::encodeName(Paths::support());
    ASSERT_EQ(::chmod(support.constData(), 0500), 0);
    EXPECT_EQ(CycleLock::fault(), QStringLiteral("permesso negato"));
    EXPECT_TRUE(CycleLock::acquire().has_value());
    ASSERT_EQ(::chmod(support.constData(), 0700), 0);
    EXPECT_EQ(CycleLock::fault(), std::nullopt);
}

TEST_F(CycleGates, theLockIsHeldFromTheStartToTheEnd)
{
    int tries = 0;
    tools.before = [&tries](const ScriptedTools::Call &) {
        ++tries;
        EXPECT_FALSE(CycleLock::acquire().has_value());
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tries, 4);
    expectEnded();
}

TEST_F(CycleGates, theLockFileIsPrivateAndStays)
{
    EXPECT_EQ(run(), 0);
    const QFileInfo file(supportFile("backup.lock"));
    ASSERT_TRUE(file.exists());
    EXPECT_EQ(file.size(), 0);
    const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                        QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther |
                        QFileDevice::ExeOwner;
    EXPECT_FALSE(file.permissions() & others);
    EXPECT_TRUE(file.permissions().testFlag(QFileDevice::ReadOwner));
    EXPECT_TRUE(file.permissions().testFlag(QFileDevice::WriteOwner));
}

TEST_F(CycleGates, withNoDestinationInUseNothingIsDone)
{
    config.localEnabled = false;
    EXPECT_EQ(run(), 0);
    expectNoRecord();
    expectEnded();
    EXPECT_TRUE(tools.calls.isEmpty());
    EXPECT_EQ(secrets.reads, 0);
}

TEST_F(CycleGates, aScheduledRunWaitsUntilTheKeyIsSaved)
{
    config.keySaved = false;
    config.skipOnBattery = true;
    onBattery = true;
    EXPECT_EQ(run(false), 0);
    expectNoRecord();
    expectEnded();
    EXPECT_EQ(batteryQuestions, 0);
    EXPECT_EQ(secrets.reads, 0);
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(CycleGates, aScheduledRunLeavesAKeyAloneThatTookTheConfirmedOnesPlace)
{
    // The window, between the start of the run and its look at the key.
    secrets.onRead = [this] {
        AppConfig changed = config;
        changed.keySaved = false;
        ConfigStore::save(changed);
    };
    EXPECT_EQ(run(false), 0);
    EXPECT_TRUE(tools.calls.isEmpty());
    expectNoRecord();
    expectEnded();
    EXPECT_EQ(run(true), 0);
    EXPECT_FALSE(tools.calls.isEmpty());
}

TEST_F(CycleGates, aManualRunDoesNotWaitForTheKeyToBeSaved)
{
    config.keySaved = false;
    EXPECT_EQ(run(true), 0);
    EXPECT_EQ(outcomes(), QStringList{QStringLiteral("local ok")});
    expectEnded();
}

TEST_F(CycleGates, onBatteryAScheduledRunIsPutOffWithOneRecord)
{
    useAllDestinations();
    config.skipOnBattery = true;
    onBattery = true;
    EXPECT_EQ(run(false), 0);
    expectGateRecord(DestinationID::Local, Outcome::Skipped, onBatteryText);
    expectEnded();
    EXPECT_EQ(secrets.reads, 0);
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(CycleGates, theRecordOfAGateGoesToTheFirstDestinationInUse)
{
    useAllDestinations();
    config.localEnabled = false;
    config.skipOnBattery = true;
    onBattery = true;
    EXPECT_EQ(run(false), 0);
    expectGateRecord(DestinationID::Drive, Outcome::Skipped, onBatteryText);
}

TEST_F(CycleGates, theServerAloneGetsTheRecordOfAGate)
{
    useAllDestinations();
    config.localEnabled = false;
    config.driveEnabled = false;
    secrets.items.clear();
    EXPECT_EQ(run(false), 1);
    expectGateRecord(DestinationID::Server, Outcome::Failed,
                     QStringLiteral("Chiave di cifratura non trovata nel Portachiavi: apri "
                                    "Vellomar"));
}

TEST_F(CycleGates, aManualRunDoesNotAskForTheBattery)
{
    config.skipOnBattery = true;
    onBattery = true;
    EXPECT_EQ(run(true), 0);
    EXPECT_EQ(batteryQuestions, 0);
    EXPECT_EQ(outcomes(), QStringList{QStringLiteral("local ok")});
}

TEST_F(CycleGates, theBatteryIsOnlyAskedForWhenTheSettingWantsIt)
{
    config.skipOnBattery = false;
    onBattery = true;
    EXPECT_EQ(run(false), 0);
    EXPECT_EQ(batteryQuestions, 0);
    EXPECT_EQ(outcomes(), QStringList{QStringLiteral("local ok")});
}

TEST_F(CycleGates, onMainsPowerAScheduledRunGoesOn)
{
    config.skipOnBattery = true;
    EXPECT_EQ(run(false), 0);
    EXPECT_EQ(batteryQuestions, 1);
    EXPECT_EQ(outcomes(), QStringList{QStringLiteral("local ok")});
}

TEST_F(CycleGates, aKeychainThatRefusesFailsTheCycle)
{
    useAllDestinations();
    secrets.readFailure = -25293;
    EXPECT_EQ(run(), 1);
    expectGateRecord(
        DestinationID::Local, Outcome::Failed,
        QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore -25293)"));
    expectEnded();
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(CycleGates, aMissingKeyFailsTheCycle)
{
    useAllDestinations();
    secrets.items.clear();
    for (const bool manual : {true, false}) {
        QFile::remove(supportFile("history.json"));
        QFile::remove(supportFile("backup.log"));
        EXPECT_EQ(run(manual), 1);
        expectGateRecord(DestinationID::Local, Outcome::Failed,
                         QStringLiteral("Chiave di cifratura non trovata nel Portachiavi: apri "
                                        "Vellomar"));
        expectEnded();
    }
    EXPECT_TRUE(tools.calls.isEmpty());
    // The engine never makes a key.
    EXPECT_EQ(secrets.adds, 0);
}

TEST_F(CycleGates, onlyTheKeyOfTheRepositoriesIsAskedFor)
{
    secrets.items.clear();
    secrets.items[{QStringLiteral("it.vellomar.app"), Keychain::previousRepositoryKey}] = "old";
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(secrets.reads, 1);
}

TEST_F(CycleGates, temporaryFilesOfAKilledRunAreRemoved)
{
    for (const char *name :
         {"status.json.aBcDeF.vellomar-partial", "history.json.aBcDeF.vellomar-partial",
          "state.json.aBcDeF.vellomar-partial", "excludes.txt.aBcDeF.vellomar-partial"}) {
        writeSupportFile(name, "half");
    }
    writeSupportFile("config.json.aBcDeF.vellomar-partial", "not the engine's");
    config.localEnabled = false;
    EXPECT_EQ(run(), 0);
    const QStringList left =
        QDir(Paths::support()).entryList({QStringLiteral("*.vellomar-partial")}, QDir::Files);
    EXPECT_EQ(left, QStringList{QStringLiteral("config.json.aBcDeF.vellomar-partial")});
}

TEST_F(CycleGates, filesThatCannotBeWrittenDoNotChangeTheResult)
{
    QFile::remove(supportFile("status.json"));
    for (const char *name : {"status.json", "history.json", "backup.log", "excludes.txt"}) {
        ASSERT_TRUE(QDir().mkdir(supportFile(name)));
    }
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.callsOf(QStringLiteral("backup")).size(), 1);
    secrets.items.clear();
    EXPECT_EQ(run(), 1);
}

} // namespace
