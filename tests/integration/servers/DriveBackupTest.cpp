#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"
#include "tests/support/Daemon.h"
#include "tests/support/SignInPage.h"

#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"

#include <QDir>

// What comes after the sign-in, with the real tools. In the service's place is a folder of the
// home, behind the remote that the sign-in made and with its token.

namespace {

class DriveBackup : public CycleHome
{
protected:
    void SetUp() override { ASSERT_TRUE(SignInPage::isApart()); }
    DriveBackup()
    {
        config.localEnabled = false;
        config.driveEnabled = true;
        config.driveFolder = QStringLiteral("Vellomar/a mac");
        saveSettings();
    }

    static bool store(const QString &name, const QString &type, const QString &key,
                      const QString &value, const QString &token = QStringLiteral("t"))
    {
        return Rclone::store(
            name, {{QStringLiteral("type"), type}, {key, value}, {QStringLiteral("token"), token}});
    }

    /// Signs in, and puts the folder in the service's place.
    void signIn() const
    {
        const SignInPage page;
        ASSERT_TRUE(page.isRunning());
        ProcessHandle handle;
        ASSERT_EQ(Rclone::connect({}, {}, handle), std::nullopt);
        const QString token =
            Rclone::remotes().value(Rclone::driveRemote).value(QLatin1String("token")).toString();
        Rclone::disconnect();
        ASSERT_TRUE(store(Rclone::driveRemote, QStringLiteral("alias"), QStringLiteral("remote"),
                          drive, token));
    }

    [[nodiscard]] Restic driver() const
    {
        Restic restic;
        restic.dest = DestinationID::Drive;
        restic.config = config;
        const auto key = Keychain::read(Keychain::repositoryKey);
        EXPECT_TRUE(key.has_value() && key->has_value());
        restic.password = key.has_value() ? key->value_or(QString()) : QString();
        return restic;
    }

    /// Restores the newest backup and compares it with the source.
    void expectRestore() const
    {
        const Restic restic = driver();
        const auto snapshots = restic.snapshots();
        ASSERT_TRUE(snapshots.has_value()) << qPrintable(snapshots.error().message);
        ASSERT_EQ(snapshots->size(), 1);
        const QString snapshot = snapshots->first().id;
        const auto nodes = restic.list(snapshot, source);
        ASSERT_TRUE(nodes.has_value()) << qPrintable(nodes.error().message);
        ASSERT_EQ(nodes->size(), 2);
        EXPECT_EQ(nodes->first().name, QStringLiteral("letter"));

        const Node node{source, QStringLiteral("source"), true, 0, std::nullopt};
        const QString target = folder(QStringLiteral("restored"));
        EXPECT_EQ(restic.run(restic.restoreArguments(snapshot, node, target)).status, 0);
        EXPECT_EQ(runProcess(QStringLiteral("/usr/bin/diff"),
                             {QStringLiteral("-r"), source, target + QLatin1String("/source")})
                      .status,
                  0);
    }

    const QString drive = folder(QStringLiteral("drive"));
};

TEST_F(DriveBackup, followsASignInAndLeavesNothingAfterTheEndOfTheConnection)
{
    ASSERT_NO_FATAL_FAILURE(signIn());
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().destination, DestinationID::Drive);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Completato"));
    EXPECT_EQ(snapshotCount(drive + QLatin1String("/Vellomar/a mac")), 1);
    expectRestore();

    const auto quota = Rclone::quota(Rclone::driveRemote);
    ASSERT_TRUE(quota);
    EXPECT_GT(quota->total, 0);
    EXPECT_GE(quota->total, quota->used);
    EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar"), Rclone::driveRemote),
              QStringList({QStringLiteral("a mac")}));

    Rclone::disconnect();
    EXPECT_FALSE(Rclone::isConfigured());
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_EQ(Rclone::quota(Rclone::driveRemote), std::nullopt);
    EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar"), Rclone::driveRemote), QStringList());
    EXPECT_EQ(QDir(Paths::support())
                  .entryList({QStringLiteral("k-*"), QStringLiteral("rclone*")},
                             QDir::AllEntries | QDir::System | QDir::Hidden),
              QStringList({QStringLiteral("rclone.conf")}));
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Skipped);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Google Drive non collegato"));
}

TEST_F(DriveBackup, aServiceThatDoesNotTellItsRoomHasNoQuota)
{
    ASSERT_TRUE(store(Rclone::driveRemote, QStringLiteral("memory"), QStringLiteral("description"),
                      QStringLiteral("tells nothing")));
    EXPECT_EQ(Rclone::quota(Rclone::driveRemote), std::nullopt);
}

TEST_F(DriveBackup, onlyTheFoldersOfAPlaceAreListed)
{
    ASSERT_TRUE(
        store(Rclone::driveRemote, QStringLiteral("alias"), QStringLiteral("remote"), drive));
    const QStringList names{QStringLiteral("a mac"), QStringLiteral("caff\u00e8, \u65e5\u672c"),
                            QStringLiteral("of [two] #1; %")};
    for (const QString &name : names) {
        ASSERT_TRUE(QDir(drive).mkpath(QLatin1String("Vellomar/") + name + QLatin1String("/in")));
    }
    writeFile(drive + QLatin1String("/Vellomar/a file"), "x");
    QStringList listed = Rclone::folders(QStringLiteral("Vellomar"), Rclone::driveRemote);
    listed.sort();
    EXPECT_EQ(listed, names);
    EXPECT_EQ(Rclone::folders({}, Rclone::driveRemote), QStringList({QStringLiteral("Vellomar")}));
    EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar/a mac/in"), Rclone::driveRemote),
              QStringList());
    EXPECT_EQ(Rclone::folders(QStringLiteral("not there"), Rclone::driveRemote), QStringList());
    EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar/a file"), Rclone::driveRemote),
              QStringList());
    EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar"), QStringLiteral("unknown")),
              QStringList());
}

TEST_F(DriveBackup, aServiceThatCannotBeReachedHasNoFoldersAndNoQuota)
{
    const QString address = QStringLiteral("http://127.0.0.1:%1").arg(Daemon::freePort());
    ASSERT_TRUE(
        store(Rclone::driveRemote, QStringLiteral("webdav"), QStringLiteral("url"), address));
    EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar"), Rclone::driveRemote), QStringList());
    EXPECT_EQ(Rclone::quota(Rclone::driveRemote), std::nullopt);
    EXPECT_TRUE(Rclone::isConfigured());
}

/// A disk, Google Drive and a private server, all in use, of which one is down.
class OneDown : public CycleHome
{
protected:
    OneDown()
    {
        connectRemotes();
        for (const QString &place : {repository, drive, server}) {
            makeRepository(place);
        }
    }

    /// Makes one of the two remotes an address on the network that doesn't answer.
    static void takeDown(const QByteArray &remote)
    {
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(Daemon::freePort());
        QByteArray settings;
        for (const QByteArray &name : {QByteArray("vellomar"), QByteArray("vellomar-server")}) {
            settings += '[' + name + "]\ntoken = t\n";
            if (name == remote) {
                settings += "type = webdav\nurl = " + address + '\n';
            } else {
                const QByteArray folder = name == "vellomar" ? "/drive" : "/server";
                settings += "type = alias\nremote = " + home().toUtf8() + folder + '\n';
            }
        }
        writeSupportFile("rclone.conf", settings);
    }

    /// Runs a cycle, and expects this outcome of the destination and success of the others.
    static void expectCycle(DestinationID down, Outcome outcome, int exitCode)
    {
        EXPECT_EQ(Cycle().run(), exitCode);
        const QList<RunRecord> history = StatusStore::loadHistory();
        ASSERT_EQ(history.size(), 3);
        EXPECT_EQ(history[2].destination, DestinationID::Local);
        EXPECT_EQ(history[1].destination, DestinationID::Drive);
        EXPECT_EQ(history[0].destination, DestinationID::Server);
        for (const RunRecord &record : history) {
            const bool isDown = record.destination == down;
            EXPECT_EQ(record.outcome, isDown ? outcome : Outcome::Ok) << qPrintable(record.message);
            EXPECT_EQ(record.message == QLatin1String("Completato"), !isDown);
            EXPECT_FALSE(record.message.isEmpty());
        }
        EXPECT_FALSE(isThere("status.json"));
    }

    const QString drive = home() + QLatin1String("/drive/Vellomar/a mac");
    const QString server = home() + QLatin1String("/server/backups/a mac");
};

TEST_F(OneDown, theDiskIsSkippedAndTheOthersRun)
{
    ASSERT_TRUE(QDir(disk).removeRecursively());
    expectCycle(DestinationID::Local, Outcome::Skipped, 0);
    EXPECT_EQ(snapshotCount(drive), 1);
    EXPECT_EQ(snapshotCount(server), 1);
}

TEST_F(OneDown, driveFailsAndTheOthersRun)
{
    takeDown("vellomar");
    expectCycle(DestinationID::Drive, Outcome::Failed, 1);
    EXPECT_EQ(snapshotCount(repository), 1);
    EXPECT_EQ(snapshotCount(server), 1);
}

TEST_F(OneDown, theServerFailsAndTheOthersRun)
{
    takeDown("vellomar-server");
    expectCycle(DestinationID::Server, Outcome::Failed, 1);
    EXPECT_EQ(snapshotCount(repository), 1);
    EXPECT_EQ(snapshotCount(drive), 1);
}

} // namespace
