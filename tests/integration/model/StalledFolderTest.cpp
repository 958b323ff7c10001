#include "model/Background.h"
#include "state/Keychain.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/OwnMounts.h"
#include "tests/support/StalledDisk.h"

#include <QFile>

#include <memory>

// The window's thread and folders on a network that doesn't answer. Where it waited for one of
// them, these tests would never end.

namespace {

class StalledFolder : public ModelFixture
{
protected:
    // Before there is any other thread.
    void SetUp() override { ASSERT_TRUE(takeOwnMounts()); }
    void TearDown() override
    {
        if (disk) {
            disk->letGo();
        }
    }

    void stall(const QString &folder)
    {
        disk = std::make_unique<StalledDisk>(folder);
        ASSERT_TRUE(disk->isMounted());
    }

    void passMinute()
    {
        clock.advance(std::chrono::minutes(1));
        tick();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] RepoInfo local() const
    {
        return model->repositories()->all().value(DestinationID::Local);
    }

    std::unique_ptr<StalledDisk> disk;
};

TEST_F(StalledFolder, doesNotHoldUpTheStart)
{
    stall(config.localFolder);
    useAllDestinations();
    start();
    EXPECT_TRUE(eventuallyInLoop(
        [this] { return !model->repositories()->all().value(DestinationID::Server).loading; }));
    EXPECT_TRUE(local().loading);
    EXPECT_FALSE(model->localFolder()->isOnSystemDisk());
    model->startBackup();
    EXPECT_TRUE(eventuallyInLoop([this] { return model->run()->isLaunching(); }));
}

TEST_F(StalledFolder, leavesOnShowWhatWasReadLast)
{
    tools.answer(
        QStringLiteral("snapshots"),
        ScriptedTools::ended(
            0, u'[' + ScriptedTools::snapshot(QStringLiteral("aa"), Paths::hostname()) + u']'));
    start();
    settle();
    ASSERT_EQ(local().snapshots.size(), 1);
    ASSERT_TRUE(model->localFolder()->isOnSystemDisk());
    stall(config.localFolder);
    model->refresh(DestinationID::Local);
    passMinute();
    writeHistory({record(0)}); // the end of a run
    tick();
    QCoreApplication::processEvents();
    EXPECT_EQ(local().snapshots.size(), 1);
    EXPECT_EQ(local().error, std::nullopt);
    EXPECT_TRUE(local().loading);
    EXPECT_TRUE(model->localFolder()->isOnSystemDisk());
    disk->letGo();
    settle();
    EXPECT_EQ(local().error, QStringLiteral("Disco non collegato"));
    EXPECT_FALSE(model->localFolder()->isOnSystemDisk());
}

TEST_F(StalledFolder, isAskedForOnceHoweverLongItTakes)
{
    stall(config.localFolder);
    start();
    // One for its volume, one for its repository.
    ASSERT_TRUE(eventuallyInLoop([] { return Background::threads().activeThreadCount() == 2; }));
    for (int i = 0; i < 5; ++i) {
        passMinute();
        model->refresh(DestinationID::Local);
    }
    // The looks at the files of the engine have come to their ends.
    EXPECT_TRUE(eventuallyInLoop([] { return Background::threads().activeThreadCount() == 2; }));
}

TEST_F(StalledFolder, givesWayToAnotherOne)
{
    stall(config.localFolder);
    start();
    change([](AppConfig &settings) { settings.localFolder = folder("elsewhere"); });
    model->refresh(DestinationID::Local);
    EXPECT_TRUE(eventuallyInLoop([this] { return !local().loading; }));
    EXPECT_EQ(local().error, std::nullopt);
    EXPECT_TRUE(eventuallyInLoop([this] { return model->localFolder()->isOnSystemDisk(); }));
    // The late answer about the first one changes nothing.
    disk->letGo();
    settle();
    EXPECT_EQ(local().error, std::nullopt);
    EXPECT_TRUE(model->localFolder()->isOnSystemDisk());
}

TEST_F(StalledFolder, thatIsMeasuredGivesWayToAnotherSelection)
{
    config.sources = {folder("far")};
    stall(folder("far"));
    start();
    model->runMeasure();
    change([](AppConfig &settings) { settings.sources = {folder("near")}; });
    EXPECT_FALSE(model->measurement()->isMeasuring());
    model->runMeasure();
    EXPECT_TRUE(eventuallyInLoop([this] { return !model->measurement()->isMeasuring(); }));
    EXPECT_TRUE(model->measurement()->sizes().contains(folder("near")));
}

} // namespace
