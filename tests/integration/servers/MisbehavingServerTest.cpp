#include "state/StatusStore.h"
#include "tests/support/Cycle.h"
#include "tests/support/ServerStory.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/Waiting.h"
#include "tests/support/WebdavFolder.h"
#include "tools/Rclone.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <chrono>
#include <csignal>

// A server that never answers, one that is cut off in the middle of a backup, one that fills up.
namespace {

using std::chrono_literals::operator""s;

QByteArray randomBytes(qsizetype count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(bytes.data()), count / 4);
    return bytes;
}

bool startScript(Daemon &daemon, const QString &name, const QStringList &arguments)
{
    return daemon.start(QStringLiteral("/usr/bin/python3"),
                        QStringList{QLatin1String(VELLOMAR_SOURCE_DIR "/tests/support/") + name} +
                            arguments);
}

/// How long a call took.
template <typename Call>
std::chrono::milliseconds lengthOf(Call call)
{
    QElapsedTimer timer;
    timer.start();
    call();
    return std::chrono::milliseconds(timer.elapsed());
}

class MisbehavingServer : public ServerStory
{
protected:
    MisbehavingServer()
    {
        config.localEnabled = true;
        config.serverKind = ServerKind::Webdav;
        config.serverUser = WebdavFolder::user();
        config.serverPath = QStringLiteral("mac");
    }

    /// The newest records are the server's and the disk's; the disk's is a good one.
    static RunRecord expectGoodDiskThenServer()
    {
        const QList<RunRecord> history = StatusStore::loadHistory();
        EXPECT_GE(history.size(), 2);
        EXPECT_EQ(history.value(1).destination, DestinationID::Local);
        EXPECT_EQ(history.value(1).outcome, Outcome::Ok);
        EXPECT_EQ(history.value(0).destination, DestinationID::Server);
        return history.value(0);
    }
    static void expectGoodCycle()
    {
        EXPECT_EQ(Cycle().run(), 0);
        const RunRecord record = expectGoodDiskThenServer();
        EXPECT_EQ(record.outcome, Outcome::Ok) << qPrintable(record.message);
    }

    QString served = folder(QStringLiteral("served"));
    QString serverRepository = served + QLatin1String("/mac");
    const QString unreachable = QString::fromLatin1(unreachableText);
};

// --- One that accepts connections and never answers ---

class MuteServer : public MisbehavingServer
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(startScript(mute, QStringLiteral("mute_server.py"), {mute.portText()}));
        url = QLatin1String("http://127.0.0.1:") + mute.portText();
    }

    Daemon mute;
    QString url;
};

TEST_F(MuteServer, isUnreachableBySSHOnceTheScanHasWaited)
{
    config.serverKind = ServerKind::Sftp;
    config.serverHost = QStringLiteral("127.0.0.1");
    config.serverPort = mute.portText();
    EXPECT_LT(lengthOf([this] { EXPECT_EQ(connect(QStringLiteral("secret")), unreachable); }), 60s);
    expectNothingLeft();
}

TEST_F(MuteServer, isUnreachableByWebDAVOnceRcloneHasWaited)
{
    config.serverHost = url;
    EXPECT_LT(lengthOf([this] { EXPECT_EQ(connect(QStringLiteral("secret")), unreachable); }), 90s);
    expectNothingLeft();
}

TEST_F(MuteServer, isUnreachableBySMBOnceRcloneHasWaited)
{
    config.serverKind = ServerKind::Smb;
    config.serverHost = QStringLiteral("127.0.0.1");
    config.serverPort = mute.portText();
    EXPECT_LT(lengthOf([this] { EXPECT_EQ(connect(QStringLiteral("secret")), unreachable); }), 90s);
    expectNothingLeft();
}

TEST_F(MuteServer, leavesShortQuestionsWithoutAnAnswerWithinTheirLimits)
{
    ASSERT_TRUE(
        Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("webdav")},
                                             {QStringLiteral("url"), url},
                                             {QStringLiteral("vendor"), QStringLiteral("other")}}));
    EXPECT_LT(lengthOf([] { EXPECT_EQ(Rclone::quota(Rclone::serverRemote), std::nullopt); }), 90s);
    EXPECT_LT(lengthOf([] {
                  EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar"), Rclone::serverRemote),
                            QStringList());
              }),
              90s);
}

TEST_F(MuteServer, leavesTheVersioningOfABucketUnknownWithinItsLimits)
{
    ASSERT_TRUE(Rclone::store(Rclone::serverRemote,
                              {{QStringLiteral("type"), QStringLiteral("s3")},
                               {QStringLiteral("provider"), QStringLiteral("Other")},
                               {QStringLiteral("endpoint"), url},
                               {QStringLiteral("access_key_id"), QStringLiteral("key")},
                               {QStringLiteral("secret_access_key"), QStringLiteral("secret")}}));
    EXPECT_LT(lengthOf([] { EXPECT_EQ(Rclone::versioning(QStringLiteral("b")), std::nullopt); }),
              120s);
}

TEST_F(MuteServer, isReportedInTheHistoryAndTheOthersRunBeforeItAndAfterIt)
{
    WebdavFolder server(served);
    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    config.serverHost = server.url();
    config.driveEnabled = true;
    saveSettings();
    ASSERT_EQ(connect(WebdavFolder::password()), std::nullopt);
    // In the place of Google Drive, which comes between the two others.
    ASSERT_TRUE(
        Rclone::store(Rclone::driveRemote, {{QStringLiteral("type"), QStringLiteral("webdav")},
                                            {QStringLiteral("url"), url},
                                            {QStringLiteral("token"), QStringLiteral("t")}}));
    EXPECT_EQ(Cycle().run(), 1);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_EQ(history[2].destination, DestinationID::Local);
    EXPECT_EQ(history[2].outcome, Outcome::Ok);
    EXPECT_EQ(history[1].destination, DestinationID::Drive);
    EXPECT_EQ(history[1].outcome, Outcome::Failed);
    EXPECT_TRUE(history[1].message.contains(QLatin1String("unable to open repository")) &&
                history[1].message.contains(QLatin1String("deadline exceeded")))
        << qPrintable(history[1].message);
    EXPECT_EQ(history[0].destination, DestinationID::Server);
    EXPECT_EQ(history[0].outcome, Outcome::Ok) << qPrintable(history[0].message);
}

// --- One that is cut off in the middle of a backup ---

class CutServer : public MisbehavingServer
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(server.start()) << qPrintable(server.output());
        ASSERT_TRUE(passOn(aLot));
        config.serverHost = QLatin1String("http://127.0.0.1:") + front.portText();
        saveSettings();
        ASSERT_EQ(connect(WebdavFolder::password()), std::nullopt);
        expectGoodCycle(); // makes the repository
        front.stop();
        writeFile(source + QLatin1String("/film"), randomBytes(30'000'000));
    }

    /// Lets so many bytes through to the server.
    bool passOn(int bytes)
    {
        front.stop();
        return startScript(front, QStringLiteral("cutting_front.py"),
                           {front.portText(), server.portText(), QString::number(bytes)});
    }
    bool isCut() { return front.output().contains(QLatin1String("cut")); }
    void expectSoundRepository()
    {
        EXPECT_EQ(snapshotCount(serverRepository), 2);
        EXPECT_TRUE(isWhole(serverRepository));
        EXPECT_FALSE(isLocked(serverRepository));
    }

    static constexpr int aLot = 1'000'000'000;
    WebdavFolder server{served};
    Daemon front;
};

TEST_F(CutServer, isBackedUpToWhenItComesBackInTheSameRun)
{
    ASSERT_TRUE(passOn(8'000'000));
    Cycle cycle;
    cycle.start();
    ASSERT_TRUE(eventually([this] { return isCut(); }));
    ASSERT_TRUE(passOn(aLot));
    EXPECT_EQ(cycle.finish(), 0);
    const RunRecord record = expectGoodDiskThenServer();
    EXPECT_EQ(record.outcome, Outcome::Ok) << qPrintable(record.message);
    EXPECT_EQ(record.filesNew, 1);
    expectSoundRepository();
}

TEST_F(CutServer, isGivenUpWhenTheUserStopsTheRunAndIsSoundAfterwards)
{
    ASSERT_TRUE(passOn(8'000'000));
    Cycle cycle;
    cycle.start();
    ASSERT_TRUE(eventually([this] { return isCut(); }));
    EXPECT_TRUE(cycle.isRunning()); // restic goes on trying
    cycle.send(SIGTERM);
    EXPECT_GE(cycle.finish(), 0);
    const RunRecord record = expectGoodDiskThenServer();
    EXPECT_EQ(record.outcome, Outcome::Cancelled);
    EXPECT_EQ(record.message, QStringLiteral("Interrotto"));
    EXPECT_FALSE(isThere("status.json"));
    EXPECT_EQ(snapshotCount(serverRepository), 1);

    ASSERT_TRUE(passOn(aLot));
    expectGoodCycle();
    expectSoundRepository();
}

// --- One that fills up ---

class FullServer : public MisbehavingServer
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(room.isMounted());
        ASSERT_TRUE(server.start()) << qPrintable(server.output());
        config.serverHost = server.url();
        saveSettings();
        ASSERT_EQ(connect(WebdavFolder::password()), std::nullopt);
        expectGoodCycle(); // makes the repository
        room.fill();
        writeFile(source + QLatin1String("/film"), randomBytes(10'000'000));
    }
    bool hasRefused()
    {
        const QString output = server.output();
        return output.contains(QLatin1String("no space left on device")) ||
               output.contains(QLatin1String("remaining disk space"));
    }

    SmallDisk room{served, 40'000};
    WebdavFolder server{served};
};

TEST_F(FullServer, isBackedUpToWhenRoomIsMadeInTheSameRun)
{
    Cycle cycle;
    cycle.start();
    ASSERT_TRUE(eventually([this] { return hasRefused(); }));
    EXPECT_TRUE(cycle.isRunning());
    room.makeRoom();
    EXPECT_EQ(cycle.finish(), 0);
    const RunRecord record = expectGoodDiskThenServer();
    EXPECT_EQ(record.outcome, Outcome::Ok) << qPrintable(record.message);
    EXPECT_EQ(snapshotCount(serverRepository), 2);
    EXPECT_TRUE(isWhole(serverRepository));
}

} // namespace
