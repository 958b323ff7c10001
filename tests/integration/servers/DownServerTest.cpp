#include "tests/support/Cycle.h"
#include "tests/support/ServerStory.h"
#include "tests/support/WebdavServer.h"
#include "tools/Rclone.h"

#include "state/StatusStore.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

/// Disk, Google Drive and a private server, all in use. In Drive's place is a folder of the home.
class DownServer : public ServerStory
{
protected:
    DownServer()
    {
        config.localEnabled = true;
        config.driveEnabled = true;
        config.driveFolder = QStringLiteral("Vellomar/a mac");
        config.serverKind = ServerKind::Webdav;
        config.serverUser = WebdavServer::user();
        makeRepository(repository);
        makeRepository(drive + QLatin1String("/Vellomar/a mac"));
    }

    void connectAll(WebdavServer &server)
    {
        ASSERT_TRUE(server.start()) << qPrintable(server.output());
        config.serverHost = server.url();
        saveSettings();
        ASSERT_EQ(connect(WebdavServer::password()), std::nullopt);
        ASSERT_TRUE(
            Rclone::store(Rclone::driveRemote,
                          {{QStringLiteral("type"), QStringLiteral("alias")},
                           {QStringLiteral("remote"), drive},
                           {QStringLiteral("token"), QStringLiteral("{\"access_token\":\"t\"}")}}));
    }

    static void expectFine(const RunRecord &record, DestinationID destination)
    {
        EXPECT_EQ(record.destination, destination);
        EXPECT_EQ(record.outcome, Outcome::Ok);
        EXPECT_EQ(record.message, QStringLiteral("Completato"));
    }

    QString drive = folder(QStringLiteral("drive"));
};

TEST_F(DownServer, oneCycleReachesAllThree)
{
    WebdavServer server;
    connectAll(server);
    EXPECT_EQ(Cycle().run(), 0);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    expectFine(history[2], DestinationID::Local);
    expectFine(history[1], DestinationID::Drive);
    expectFine(history[0], DestinationID::Server);
    EXPECT_EQ(snapshotCount(repository), 1);
    EXPECT_EQ(snapshotCount(drive + QLatin1String("/Vellomar/a mac")), 1);
    EXPECT_EQ(snapshotCount(server.folder() + QLatin1String("/backups/a mac")), 1);
}

TEST_F(DownServer, doesNotStopTheOthersAndIsBackedUpToOnceItIsBack)
{
    WebdavServer server;
    connectAll(server);
    server.stop();
    EXPECT_EQ(Cycle().run(), 1);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    expectFine(history[2], DestinationID::Local);
    expectFine(history[1], DestinationID::Drive);
    EXPECT_EQ(history[0].destination, DestinationID::Server);
    EXPECT_EQ(history[0].outcome, Outcome::Failed);
    EXPECT_THAT(history[0].message.toStdString(),
                HasSubstr("unable to open repository at rclone:vellomar-server:backups/a mac"));
    EXPECT_EQ(snapshotCount(repository), 1);
    EXPECT_EQ(snapshotCount(drive + QLatin1String("/Vellomar/a mac")), 1);

    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    EXPECT_EQ(Cycle().run(), 0);
    expectFine(newestRecord(), DestinationID::Server);
    EXPECT_EQ(snapshotCount(server.folder() + QLatin1String("/backups/a mac")), 1);
    EXPECT_EQ(snapshotCount(repository), 2);
}

} // namespace
