#include "model/Background.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/OwnMounts.h"
#include "tests/support/StalledDisk.h"

#include <QDir>

#include <memory>
#include <vector>

// The window's thread while everything that it could wait for hangs. Where it waited for any of
// them, these tests would never end.

namespace {

class HeldUp : public ModelFixture
{
protected:
    // Before there is any other thread.
    void SetUp() override { ASSERT_TRUE(takeOwnMounts()); }
    void TearDown() override
    {
        for (const auto &disk : disks) {
            disk->letGo();
        }
    }

    void stall(const QString &folder)
    {
        disks.push_back(std::make_unique<StalledDisk>(folder));
        ASSERT_TRUE(disks.back()->isMounted());
    }

    /// Every disk, every tool and the keyring.
    void holdAll()
    {
        stall(Paths::support());
        stall(QDir::homePath() + QLatin1String("/.config"));
        stall(config.localFolder);
        stall(folder("source"));
        stall(folder("stick"));
        tools.hold();
        tools.holdRclone();
        tools.holdConnections();
        tools.holdSchedule();
        secrets.holdNext();
    }

    /// Turns of the event loop, each of which comes to its end.
    static void turn()
    {
        for (int i = 0; i < 20; ++i) {
            QCoreApplication::processEvents();
        }
    }

    std::vector<std::unique_ptr<StalledDisk>> disks;
};

TEST_F(HeldUp, whateverTheUserDoesNoFrameWaits)
{
    useAllDestinations();
    start();
    settle();
    desktop->savePath = folder("stick") + QLatin1String("/kit.txt");
    holdAll();
    change([](AppConfig &settings) { settings.autoBackup = !settings.autoBackup; });
    desktop->pass(std::chrono::milliseconds(300));
    turn();
    model->run()->look();
    clock.advance(std::chrono::minutes(1));
    model->run()->look();
    turn();
    model->refresh(DestinationID::Local);
    model->refresh(DestinationID::Drive);
    model->refreshQuota();
    model->connections()->read();
    model->checkPermissions();
    model->measureSources();
    model->runMeasure();
    model->saveRecoveryKit();
    model->becomeActive();
    model->requestAccessInSettings(AppModel::GatedAction::Backup);
    turn();
    model->replaceKey(QStringLiteral("another key"), [](const auto &) {});
    model->requestPreviousKey();
    model->startBackup();
    turn();
    EXPECT_TRUE(model->key()->isChecking());
    EXPECT_TRUE(model->measurement()->isMeasuring());
    // What was read last stays on show.
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_EQ(model->run()->supportError(), std::nullopt);
    EXPECT_TRUE(model->repositories()->of(DestinationID::Local).loading);
}

TEST_F(HeldUp, aBackupThatCannotStartIsGivenUpAndDoesNotStartLater)
{
    start();
    settle();
    stall(Paths::support());
    model->startBackup();
    ASSERT_TRUE(eventuallyInLoop([this] { return model->run()->isLaunching(); }));
    desktop->pass(std::chrono::seconds(6));
    EXPECT_FALSE(model->run()->isBusy());
    disks.back()->letGo();
    settle();
    EXPECT_TRUE(desktop->started.isEmpty());
}

TEST_F(HeldUp, theModelMayGoMeanwhile)
{
    useAllDestinations();
    start();
    settle();
    holdAll();
    change([](AppConfig &settings) { settings.autoBackup = !settings.autoBackup; });
    model->refresh(DestinationID::Local);
    model->install(QStringLiteral("another key"), false, [](const auto &) { FAIL(); });
    model.reset();
    turn();
}

} // namespace
