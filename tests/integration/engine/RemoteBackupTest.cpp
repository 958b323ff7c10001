#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"

#include "state/StatusStore.h"

#include <QDir>

namespace {

using RemoteBackup = CycleHome;

TEST_F(RemoteBackup, oneCycleGoesToDiskDriveAndServer)
{
    connectRemotes();
    EXPECT_EQ(Cycle().run(), 0);

    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_EQ(history[2].destination, DestinationID::Local);
    EXPECT_EQ(history[1].destination, DestinationID::Drive);
    EXPECT_EQ(history[0].destination, DestinationID::Server);
    for (const RunRecord &record : history) {
        EXPECT_EQ(record.outcome, Outcome::Ok);
        EXPECT_EQ(record.message, QStringLiteral("Completato"));
        EXPECT_EQ(record.filesNew, 2);
    }
    EXPECT_EQ(snapshotCount(repository), 1);
    EXPECT_EQ(snapshotCount(home() + QLatin1String("/drive/Vellomar/a mac")), 1);
    const QString server = home() + QLatin1String("/server/backups/a mac");
    EXPECT_EQ(snapshotCount(server), 1);
    EXPECT_TRUE(isWhole(server));

    // The credentials are in the envelope now, and no pipe or plain copy is left.
    const QByteArray settings = readFile(Paths::supportFile(QStringLiteral("rclone.conf")));
    EXPECT_TRUE(settings.startsWith("# Encrypted")) << settings.toStdString();
    EXPECT_FALSE(settings.contains("token"));
    const QStringList left = QDir(Paths::support())
                                 .entryList({QStringLiteral("k-*"), QStringLiteral("rclone-*")},
                                            QDir::Files | QDir::System | QDir::Hidden);
    EXPECT_EQ(left, QStringList());
    EXPECT_FALSE(isThere("status.json"));
}

TEST_F(RemoteBackup, aProgramInAPlaceWithQuotesReachesTheRemotes)
{
    connectRemotes();
    config.localEnabled = false;
    config.driveEnabled = false;
    saveSettings();
    // restic splits the line that names rclone at quotes, and can't escape both kinds in one.
    int runs = 0;
    for (const char *name : {"Anna's tools", "the \"tools\", 2", "Anna's \"tools\", \\ 2"}) {
        Installation installation(QString::fromUtf8(name));
        installation.addReal(QStringLiteral("restic"));
        installation.addReal(QStringLiteral("rclone"));
        EXPECT_EQ(Cycle(installation.program()).run(), 0) << name;
        EXPECT_EQ(recordCount(), ++runs) << name;
        EXPECT_EQ(newestRecord().outcome, Outcome::Ok) << qPrintable(newestRecord().message);
    }
}

TEST_F(RemoteBackup, anAccountThatIsNotConnectedIsSkippedAndTheOthersRun)
{
    makeRepository(repository);
    connectRemotes();
    writeSupportFile("rclone.conf", "[vellomar]\ntype = alias\nremote = " + home().toUtf8() + '\n');
    EXPECT_EQ(Cycle().run(), 0);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_EQ(history[2].outcome, Outcome::Ok);
    // There is no token.
    EXPECT_EQ(history[1].outcome, Outcome::Skipped);
    EXPECT_EQ(history[1].message, QStringLiteral("Google Drive non collegato"));
    EXPECT_EQ(history[0].outcome, Outcome::Skipped);
    EXPECT_EQ(history[0].message, QStringLiteral("Server non collegato"));
}

TEST_F(RemoteBackup, withoutRcloneTheRemotesAreSkipped)
{
    makeRepository(repository);
    connectRemotes();
    Installation installation;
    installation.addReal(QStringLiteral("restic"));
    EXPECT_EQ(Cycle(installation.program()).run(), 0);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_EQ(history[2].outcome, Outcome::Ok);
    EXPECT_EQ(history[1].message, QStringLiteral("Google Drive non collegato"));
    EXPECT_EQ(history[0].message, QStringLiteral("Server non collegato"));
    // What can't be encrypted stays as it was.
    EXPECT_TRUE(
        readFile(Paths::supportFile(QStringLiteral("rclone.conf"))).contains("type = alias"));
}

TEST_F(RemoteBackup, aServerThatCannotBeOpenedFailsAndTheOthersRun)
{
    makeRepository(repository);
    connectRemotes();
    config.driveEnabled = false;
    saveSettings();
    writeSupportFile("rclone.conf", "[vellomar-server]\ntype = of no kind\n");
    EXPECT_EQ(Cycle().run(), 1);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history[1].outcome, Outcome::Ok);
    EXPECT_EQ(history[0].outcome, Outcome::Failed);
    EXPECT_NE(history[0].message, QString());
}

} // namespace
