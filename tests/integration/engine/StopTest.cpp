#include "tests/support/ScriptedRestic.h"

#include "engine/CycleLock.h"
#include "state/StatusStore.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <unistd.h>

namespace {

/// Whether a process has received all stop signals that were sent to it.
bool hasServedSignals(qint64 process)
{
    static constexpr quint64 stops =
        (1U << (SIGINT - 1)) | (1U << (SIGTERM - 1)) | (1U << (SIGHUP - 1));
    QFile file(QStringLiteral("/proc/%1/status").arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("ShdPnd:")) {
            return (line.mid(7).trimmed().toULongLong(nullptr, 16) & stops) == 0;
        }
    }
    return false;
}

/// The child of this test that runs a program of this name (of which the kernel keeps 15 letters).
pid_t childNamed(const QByteArray &name)
{
    for (const pid_t child : childrenOf(::getpid())) {
        QFile file(QStringLiteral("/proc/%1/comm").arg(child));
        if (file.open(QIODevice::ReadOnly) &&
            file.readAll().trimmed() == name.first(qMin(name.size(), 15))) {
            return child;
        }
    }
    return 0;
}

class Stop : public ScriptedRestic
{
protected:
    static void expectStopped()
    {
        EXPECT_EQ(recordCount(), 1);
        EXPECT_EQ(newestRecord().outcome, Outcome::Cancelled);
        EXPECT_EQ(newestRecord().message, QStringLiteral("Interrotto"));
        expectCleanedUp();
    }

    static void expectCleanedUp()
    {
        EXPECT_FALSE(isThere("status.json"));
        EXPECT_TRUE(CycleLock::acquire().has_value());
    }

    Cycle cycle{installation.program()};
};

class StopSignals : public Stop, public testing::WithParamInterface<int>
{
};

TEST_P(StopSignals, reachTheBackupAsAnInterrupt)
{
    script("await");
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    cycle.send(GetParam());
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(signalsNoted(), "INT\n");
    expectStopped();
}

class IgnoredStopSignals : public StopSignals
{
};

TEST_P(IgnoredStopSignals, areHeardAllTheSame)
{
    script("await");
    cycle.startBy(QStringLiteral("sh"),
                  {QStringLiteral("-c"), QStringLiteral("trap '' INT TERM; exec \"$@\""),
                   QStringLiteral("sh")});
    ASSERT_TRUE(isAwaiting());
    cycle.send(GetParam());
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(signalsNoted(), "INT\n");
    expectStopped();
}

std::string nameOf(const testing::TestParamInfo<int> &signal)
{
    return signal.param == SIGTERM ? "term" : signal.param == SIGINT ? "int" : "hup";
}

INSTANTIATE_TEST_SUITE_P(Stop, StopSignals, testing::Values(SIGTERM, SIGINT, SIGHUP), nameOf);
INSTANTIATE_TEST_SUITE_P(Stop, IgnoredStopSignals, testing::Values(SIGTERM, SIGINT), nameOf);

TEST_F(Stop, severalSignalsInARowAreOneStop)
{
    // This one takes its time to stop.
    script("trap 'echo INT >>\"$HOME/signals\"' INT\nawait\nexit 130");
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    for (const int signal : {SIGTERM, SIGINT, SIGTERM, SIGINT, SIGTERM}) {
        cycle.send(signal);
        EXPECT_TRUE(eventually([this] { return hasServedSignals(cycle.processId()); }));
    }
    EXPECT_TRUE(eventually([this] { return signalsNoted().startsWith("INT\n"); }));
    EXPECT_TRUE(cycle.isRunning());
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(signalsNoted().replace("INT\n", ""), "");
    expectStopped();
}

TEST_F(Stop, whileTheRepositoryIsOpenedItWaitsForThatStep)
{
    script("while :; do sleep 0.02; done", "await; exit 0");
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    cycle.send(SIGTERM);
    ASSERT_TRUE(eventually([this] { return hasServedSignals(cycle.processId()); }));
    EXPECT_TRUE(cycle.isRunning());
    EXPECT_EQ(signalsNoted(), "");
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    expectStopped();
    EXPECT_TRUE(commands().startsWith("cat\n"));
    EXPECT_FALSE(commands().contains("unlock"));
}

// Signals as a terminal sends them: to the whole group of the program.
class StopFromATerminal : public Stop
{
protected:
    void start(const QStringList &words = {}) { cycle.startBy(QStringLiteral("setsid"), words); }
    void sendToGroup(int signal) const
    {
        ASSERT_EQ(::kill(-static_cast<pid_t>(cycle.processId()), signal), 0);
    }
};

TEST_F(StopFromATerminal, whileTheRepositoryIsOpenedIsAStop)
{
    script("exit 0", "await; exit 0");
    start();
    ASSERT_TRUE(isAwaiting());
    sendToGroup(SIGINT);
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    expectStopped();
}

TEST_F(StopFromATerminal, whileTheConnectionsAreReadIsAStop)
{
    connectRemotes();
    config.localEnabled = false;
    config.serverEnabled = false;
    saveSettings();
    installation.addScript(QStringLiteral("rclone"),
                           "#!/bin/bash\n"
                           "[ \"$2\" = dump ] || exit 0\n"
                           "touch \"$HOME/awaiting\"\n"
                           "until [ -e \"$HOME/go\" ]; do sleep 0.02; done\n"
                           "echo '{\"vellomar\":{\"token\":\"t\"}}'\n");
    start();
    ASSERT_TRUE(isAwaiting());
    sendToGroup(SIGINT);
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    expectStopped();
}

TEST_F(StopFromATerminal, theHangUpIsAStop)
{
    script("await");
    start();
    ASSERT_TRUE(isAwaiting());
    sendToGroup(SIGHUP);
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(signalsNoted(), "INT\n");
    expectStopped();
}

TEST_F(StopFromATerminal, theHangUpIsNoneUnderNohup)
{
    script("await");
    start({QStringLiteral("nohup")});
    ASSERT_TRUE(isAwaiting());
    sendToGroup(SIGHUP);
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    expectCleanedUp();
}

TEST_F(Stop, beforeTheFirstChildLeavesNoRecord)
{
    // A keyring that doesn't answer holds the cycle at its gates.
    const pid_t daemon = childNamed("gnome-keyring-daemon");
    ASSERT_GT(daemon, 0);
    ASSERT_EQ(::kill(daemon, SIGSTOP), 0);
    writeSupportFile("status.json", "{}");
    cycle.start();
    EXPECT_TRUE(
        eventually([] { return isThere("backup.lock") && !CycleLock::acquire().has_value(); }));
    cycle.send(SIGTERM);
    EXPECT_TRUE(eventually([this] { return hasServedSignals(cycle.processId()); }));
    EXPECT_TRUE(cycle.isRunning());
    ASSERT_EQ(::kill(daemon, SIGCONT), 0);
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_FALSE(isThere("history.json"));
    EXPECT_EQ(commands(), "");
    expectCleanedUp();
}

TEST_F(Stop, betweenTwoDestinationsEndsTheCycleAtTheNextBackup)
{
    connectRemotes();
    script("case $RESTIC_REPOSITORY in rclone:*) while :; do sleep 0.02; done;; esac; exit 0");
    installation.addScript(QStringLiteral("rclone"),
                           "#!/bin/bash\n"
                           "trap 'echo rclone >>\"$HOME/signals\"' INT TERM\n"
                           "[ \"$2\" = dump ] || exit 0\n"
                           "touch \"$HOME/awaiting\"\n"
                           "until [ -e \"$HOME/go\" ]; do sleep 0.02; done\n"
                           "echo '{\"vellomar\":{\"token\":\"t\"},\"vellomar-server\":{}}'\n");
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    cycle.send(SIGINT);
    ASSERT_TRUE(eventually([this] { return hasServedSignals(cycle.processId()); }));
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history[1].destination, DestinationID::Local);
    EXPECT_EQ(history[1].outcome, Outcome::Ok);
    EXPECT_EQ(history[0].destination, DestinationID::Drive);
    EXPECT_EQ(history[0].outcome, Outcome::Cancelled);
    EXPECT_FALSE(signalsNoted().contains("rclone"));
    expectCleanedUp();
}

TEST_F(Stop, aBackupThatFailedBeforeStillCounts)
{
    connectRemotes();
    script("case $RESTIC_REPOSITORY in rclone:*) await;; esac; exit 1");
    installation.addScript(QStringLiteral("rclone"),
                           "#!/bin/sh\n"
                           "echo '{\"vellomar\":{\"token\":\"t\"},\"vellomar-server\":{}}'\n");
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    cycle.send(SIGTERM);
    EXPECT_EQ(cycle.finish(), 1);
    EXPECT_EQ(recordCount(), 2);
    EXPECT_EQ(newestRecord().outcome, Outcome::Cancelled);
    expectCleanedUp();
}

TEST_F(Stop, aSessionBusThatGoesAwayIsNoStop)
{
    script("await");
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    const pid_t bus = childNamed("dbus-daemon");
    ASSERT_GT(bus, 0);
    ASSERT_EQ(::kill(bus, SIGKILL), 0);
    EXPECT_TRUE(eventually([bus] { return hasEnded(bus); }));
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
}

TEST_F(Stop, theRealResticLeavesNoLockAndTheNextRunIsWell)
{
    installation.addReal(QStringLiteral("restic"));
    const QString longFile = source + QLatin1String("/long");
    QFile file(longFile);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64{16} * 1024 * 1024 * 1024));
    cycle.start();
    ASSERT_TRUE(eventually([] { return phase() == QLatin1String("Copia dei file"); }));
    cycle.send(SIGTERM);
    EXPECT_EQ(cycle.finish(), 0);
    expectStopped();
    EXPECT_EQ(snapshotCount(repository), 0);
    EXPECT_FALSE(isLocked(repository));

    ASSERT_TRUE(file.remove());
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_TRUE(isWhole(repository));
}

} // namespace
