#include "model/LocalFolder.h"
#include "platform/VolumesFolder.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QStorageInfo>

// The destinations as the pages change them.

namespace {

class Places : public ModelFixture
{
protected:
    /// One that isn't there.
    static QString path(const char *name) { return QDir::homePath() + u'/' + QLatin1String(name); }
};

TEST_F(Places, theChosenFolderIsInUseAndRead)
{
    config.localEnabled = false;
    config.localFolder.clear();
    start();
    settle();
    ASSERT_TRUE(model->repositories()->all().isEmpty());
    QDir().mkpath(folder("disk"));
    desktop->folders = {folder("disk")};
    model->chooseLocalFolder();
    EXPECT_EQ(model->config().localFolder, folder("disk"));
    EXPECT_TRUE(model->config().localEnabled);
    settle();
    EXPECT_TRUE(model->repositories()->all().contains(DestinationID::Local));
    ASSERT_EQ(desktop->folderPanels.size(), 1);
    const Desktop::FolderQuestion &asked = desktop->folderPanels.first();
    EXPECT_EQ(asked.prompt, QStringLiteral("Usa questa cartella"));
    EXPECT_EQ(asked.message,
              QStringLiteral("Scegli il disco o la cartella in cui salvare i backup"));
    EXPECT_EQ(asked.startFolder, volumesFolder());
}

TEST_F(Places, aCancelledPanelKeepsTheFolder)
{
    start();
    const AppConfig before = model->config();
    model->chooseLocalFolder();
    EXPECT_EQ(model->config(), before);
}

TEST_F(Places, theRoomOfTheDiskIsKnownALittleLater)
{
    QDir().mkpath(config.localFolder);
    start();
    settle();
    EXPECT_TRUE(model->localFolder()->isKnown());
    ASSERT_TRUE(model->localFolder()->hasVolume());
    EXPECT_EQ(model->localFolder()->total(), QStorageInfo(config.localFolder).bytesTotal());
    EXPECT_GT(model->localFolder()->free(), 0);
    EXPECT_LE(model->localFolder()->free(), model->localFolder()->total());
    EXPECT_EQ(model->space().freeSpace(DestinationID::Local), model->localFolder()->free());
}

TEST_F(Places, aDiskThatIsAwayHasNoRoom)
{
    config.localFolder = path("away");
    start();
    settle();
    EXPECT_TRUE(model->localFolder()->isKnown());
    EXPECT_FALSE(model->localFolder()->hasVolume());
    EXPECT_EQ(model->localFolder()->free(), 0);
    EXPECT_EQ(model->space().freeSpace(DestinationID::Local), std::nullopt);
    QDir().mkpath(path("away"));
    model->localFolder()->look();
    settle();
    EXPECT_TRUE(model->localFolder()->hasVolume());
}

TEST_F(Places, aDiskThatIsTakenAwayIsMissedWithTheNextLookAtTheRoom)
{
    QDir().mkpath(config.localFolder);
    start();
    settle();
    ASSERT_TRUE(model->localFolder()->hasVolume());
    ASSERT_TRUE(QDir(config.localFolder).removeRecursively());
    model->refreshQuota();
    settle();
    EXPECT_TRUE(model->localFolder()->isKnown());
    EXPECT_FALSE(model->localFolder()->hasVolume());
}

TEST_F(Places, withoutAFolderThereIsNoRoom)
{
    config.localEnabled = false;
    config.localFolder.clear();
    start();
    settle();
    EXPECT_TRUE(model->localFolder()->isKnown());
    EXPECT_FALSE(model->localFolder()->hasVolume());
    EXPECT_FALSE(model->localFolder()->isOnSystemDisk());
}

TEST_F(Places, aDifferentFolderIsUnknownUntilItWasLookedAt)
{
    QDir().mkpath(config.localFolder);
    start();
    settle();
    ASSERT_TRUE(model->localFolder()->hasVolume());
    const SignalCount changes(model->localFolder(), &LocalFolder::changed);
    change([](AppConfig &settings) { settings.localFolder = path("different"); });
    EXPECT_FALSE(model->localFolder()->isKnown());
    EXPECT_FALSE(model->localFolder()->hasVolume());
    settle();
    EXPECT_TRUE(model->localFolder()->isKnown());
    EXPECT_FALSE(model->localFolder()->hasVolume());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(Places, aDisconnectedPlaceIsOutOfUseAtOnce)
{
    useAllDestinations();
    start();
    settle();
    ASSERT_TRUE(model->repositories()->all().contains(DestinationID::Drive));
    model->disconnectDrive();
    EXPECT_FALSE(model->config().driveEnabled);
    EXPECT_FALSE(model->repositories()->all().contains(DestinationID::Drive));
    EXPECT_FALSE(model->connections()->drive().connected);
    EXPECT_TRUE(model->config().serverEnabled);
    model->disconnectServer();
    EXPECT_FALSE(model->config().serverEnabled);
    EXPECT_FALSE(model->repositories()->all().contains(DestinationID::Server));
    settle();
    EXPECT_EQ(tools.count(QStringLiteral("rclone"), QStringLiteral("config delete vellomar")), 2);
}

TEST_F(Places, aConnectedServerIsInUseAndRead)
{
    config.serverKind = ServerKind::Webdav;
    config.serverHost = QStringLiteral("https://nas/dav");
    tools.answer(QStringLiteral("obscure"), ScriptedTools::ended(0, QStringLiteral("obscured")));
    start();
    settle();
    tools.setRemotes(QStringLiteral(R"({"vellomar-server": {"type": "webdav"}})"));
    model->connectServer(QStringLiteral("secret"));
    EXPECT_TRUE(model->connections()->server().connecting);
    settle();
    EXPECT_EQ(model->connections()->server().error, QString());
    EXPECT_TRUE(model->connections()->server().connected);
    EXPECT_TRUE(model->config().serverEnabled);
    EXPECT_TRUE(model->repositories()->all().contains(DestinationID::Server));
    EXPECT_GT(tools.count(QStringLiteral("rclone"), QStringLiteral("about vellomar-server:")), 1);
}

TEST_F(Places, leavingTheWindowCancelsASignIn)
{
    tools.answer(QStringLiteral("config create"), ScriptedTools::ended(1));
    start();
    settle();
    tools.holdRclone();
    model->connectDrive();
    model->becomeHidden();
    tools.letGo();
    settle();
    EXPECT_EQ(model->connections()->drive().error, QStringLiteral("Collegamento annullato"));
}

} // namespace
