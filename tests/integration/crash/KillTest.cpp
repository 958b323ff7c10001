#include "platform/Clock.h"
#include "state/StatusStore.h"
#include "tests/support/BackupHome.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tests/support/ManualClock.h"
#include "tools/FileDescriptor.h"
#include "tools/OneShotSecret.h"
#include "tools/ProcessRunner.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>

#include <array>
#include <cerrno>
#include <csignal>
#include <functional>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

// The program is killed in the midst of its work, alone or together with the tools that it runs, as
// when the machine loses its power. The next cycle must run as usual.
namespace {

constexpr int killed = 128 + SIGKILL;

/// One cycle of the real program.
class KilledCycle
{
public:
    KilledCycle()
    {
        const QByteArray program = QFile::encodeName(Installation::builtProgram());
        QByteArray backup("--backup");
        QByteArray manual("--manual");
        QByteArray name = program;
        const std::array<char *, 4> words{name.data(), backup.data(), manual.data(), nullptr};
        if (::posix_spawn(&m_pid, program.constData(), nullptr, nullptr, words.data(), environ) !=
            0) {
            m_pid = -1;
        }
        m_clock.start();
    }
    ~KilledCycle()
    {
        if (m_pid > 0) {
            kill(true);
        }
    }
    KilledCycle(const KilledCycle &) = delete;
    KilledCycle &operator=(const KilledCycle &) = delete;
    KilledCycle(KilledCycle &&) = delete;
    KilledCycle &operator=(KilledCycle &&) = delete;

    [[nodiscard]] qint64 elapsed() const { return m_clock.nsecsElapsed() / 1000; }

    bool hasEnded()
    {
        siginfo_t info{};
        return ::waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
               info.si_pid == m_pid;
    }
    /// The exit code, or 128 and the signal.
    int wait()
    {
        int status = 0;
        while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
        }
        m_pid = -1;
        return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    }
    int kill(bool withTools)
    {
        if (withTools) {
            killWithAllItStarted(m_pid);
        } else {
            ::kill(m_pid, SIGKILL);
        }
        return wait();
    }

private:
    pid_t m_pid = -1;
    QElapsedTimer m_clock;
};

/// The tools that outlived the program that had started them: they are this process's children now.
QList<pid_t> orphans()
{
    QList<pid_t> found;
    static const QByteArrayList tools{"restic\n", "rclone\n", "vellomar\n"};
    for (const pid_t child : childrenOf(::getpid())) {
        QFile name(QStringLiteral("/proc/%1/comm").arg(child));
        if (name.open(QIODevice::ReadOnly) && tools.contains(name.readAll())) {
            found.append(child);
        }
    }
    return found;
}

/// Reaps those that have ended; true when no others are left.
bool buryOrphans()
{
    bool all = true;
    for (const pid_t orphan : orphans()) {
        all = ::waitpid(orphan, nullptr, WNOHANG) == orphan && all;
    }
    return all && orphans().isEmpty();
}

QStringList pipesLeft()
{
    return supportFiles().filter(QRegularExpression(QStringLiteral("^k-")));
}

bool holdsBytes(const QString &name)
{
    const FileDescriptor pipe(::open(QFile::encodeName(Paths::supportFile(name)).constData(),
                                     O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    char byte = 0;
    return !pipe.isOpen() || ::read(pipe.get(), &byte, 1) != 0;
}

ProcessResult restic(const QString &repository, const QStringList &arguments)
{
    return runProcess(Installation::realTool(QStringLiteral("restic")),
                      QStringList{QStringLiteral("--no-cache"), QStringLiteral("-r"), repository} +
                          arguments,
                      {.input = BackupHome::repositoryKey()});
}

// restic's locks on a repository. Names of another length are files still being written.
QStringList locks(const QString &repository)
{
    static const QRegularExpression identity(QStringLiteral("^[0-9a-f]{64}$"));
    return QDir(repository + QLatin1String("/locks")).entryList(QDir::Files).filter(identity);
}

class KillTest : public testing::Test
{
protected:
    void SetUp() override
    {
        // A killed process that isn't reaped still has its id, and restic takes its lock for one
        // in use.
        ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
        ASSERT_TRUE(home.isReady());
        ASSERT_TRUE(home.makeRepositories());
        runWell(); // encrypts rclone's file
        KilledCycle cycle;
        ASSERT_EQ(cycle.wait(), 0);
        length = cycle.elapsed();
    }
    void TearDown() override
    {
        for (const pid_t tool : orphans()) {
            ::kill(tool, SIGKILL);
        }
        eventually(buryOrphans);
    }

    /// Runs a cycle to its end, which must succeed and leave only the files that belong there.
    void runWell()
    {
        const qsizetype before = StatusStore::loadHistory().size();
        ASSERT_EQ(KilledCycle().wait(), 0);
        const QList<RunRecord> history = StatusStore::loadHistory();
        ASSERT_GE(history.size(), before + 2);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(history.at(i).outcome, Outcome::Ok) << qPrintable(history.at(i).message);
        }
        EXPECT_EQ(history.at(0).destination, DestinationID::Server);
        EXPECT_EQ(history.at(1).destination, DestinationID::Local);
    }

    /// A cycle with something to back up, killed when `isDue` holds; false when it had ended
    /// before that.
    bool killWhen(bool withTools, const std::function<bool(const KilledCycle &)> &isDue)
    {
        EXPECT_TRUE(home.addToSource(QStringLiteral("change %1").arg(++changes), 300'000));
        KilledCycle cycle;
        EXPECT_TRUE(eventually([&] { return isDue(cycle) || cycle.hasEnded(); }));
        if (cycle.hasEnded()) {
            length = qMin(length, cycle.elapsed());
            EXPECT_EQ(cycle.wait(), 0);
            return false;
        }
        EXPECT_EQ(cycle.kill(withTools), killed);
        return true;
    }

    /// What must hold after each kill.
    void recover()
    {
        ASSERT_TRUE(eventually(buryOrphans));
        for (const QString &pipe : pipesLeft()) {
            EXPECT_FALSE(holdsBytes(pipe)) << qPrintable(pipe);
        }
        EXPECT_EQ(home.filesWithSecrets().join(u' '), QString());

        runWell();
        ManualClock clock(QDateTime::currentDateTimeUtc().addSecs(61));
        const ScopedClock later(clock);
        OneShotSecret::removeStale();
        static const QStringList belonging{
            QStringLiteral("backup.lock"),  QStringLiteral("backup.log"),
            QStringLiteral("config.json"),  QStringLiteral("excludes.txt"),
            QStringLiteral("history.json"), QStringLiteral("rclone.conf"),
            QStringLiteral("state.json")};
        EXPECT_EQ(supportFiles().join(u' '), belonging.join(u' '));
        EXPECT_EQ(home.filesWithSecrets().join(u' '), QString());
    }

    /// Kills at the moment that this part of a cycle has passed, and recovers. A cycle that was
    /// faster than the one that was measured counts for nothing: the next try knows its length.
    void killAndRecoverAt(double part, bool withTools)
    {
        SCOPED_TRACE(testing::Message() << "killed at " << part << " of a cycle");
        static constexpr int tries = 5;
        bool done = false;
        for (int i = 0; i < tries && !done; ++i) {
            done = killWhen(withTools, [&](const KilledCycle &cycle) {
                return static_cast<double>(cycle.elapsed()) >= part * static_cast<double>(length);
            });
        }
        ASSERT_TRUE(done);
        recover();
    }

    void expectWholeRepository(const QString &repository) const
    {
        const ProcessResult check =
            restic(repository, {QStringLiteral("check"), QStringLiteral("--read-data")});
        EXPECT_EQ(check.status, 0) << qPrintable(check.standardError);
        const QString target = QDir::homePath() + QLatin1String("/restored");
        const ProcessResult restore =
            restic(repository, {QStringLiteral("restore"), QLatin1String("latest:") + home.source(),
                                QStringLiteral("--target"), target});
        EXPECT_EQ(restore.status, 0) << qPrintable(restore.standardError);
        const ProcessResult comparison = runProcess(QStringLiteral("/usr/bin/diff"),
                                                    {QStringLiteral("-r"), home.source(), target});
        EXPECT_EQ(comparison.status, 0) << qPrintable(comparison.standardOutput);
        QDir(target).removeRecursively();
    }
    void expectWholeRepositories() const
    {
        expectWholeRepository(home.localRepository());
        expectWholeRepository(home.serverRepository());
    }

    BackupHome home;
    qint64 length = 0; ///< of a whole cycle, in microseconds
    int changes = 0;
};

TEST_F(KillTest, theNextCycleRunsWellAfterAKillAtTwentyMomentsOfACycle)
{
    static constexpr int moments = 20;
    for (int i = 0; i < moments; ++i) {
        ASSERT_NO_FATAL_FAILURE(killAndRecoverAt((i + 0.5) / moments, i % 2 == 1));
    }
    expectWholeRepositories();
}

TEST_F(KillTest, theNextCycleRunsWellAfterAKillBeforeTheFirstStatusAndOneWhileResticHoldsItsLock)
{
    ASSERT_TRUE(killWhen(false, [](const KilledCycle &) { return true; }));
    EXPECT_FALSE(QFile::exists(Paths::supportFile(QStringLiteral("status.json"))));
    ASSERT_NO_FATAL_FAILURE(recover());

    for (const QString &repository : {home.localRepository(), home.serverRepository()}) {
        SCOPED_TRACE(qPrintable(repository));
        ASSERT_TRUE(
            killWhen(true, [&](const KilledCycle &) { return !locks(repository).isEmpty(); }));
        EXPECT_TRUE(StatusStore::loadStatus());
        ASSERT_NO_FATAL_FAILURE(recover());
        EXPECT_EQ(locks(repository).join(u' '), QString());
    }
    expectWholeRepositories();
}

} // namespace
