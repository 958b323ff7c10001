#include "tests/support/OrdinaryUser.h"
#include "tools/ProcessRunner.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

ProcessResult shell(const QString &script, const ProcessOptions &options = {})
{
    return runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script}, options);
}

// The child's own list of its descriptors. The fourth is the one by which ls reads it.
QStringList childsDescriptors(const ProcessOptions &options = {})
{
    QStringList names =
        runProcess(QStringLiteral("/bin/ls"), {QStringLiteral("/proc/self/fd")}, options)
            .standardOutput.split(u'\n', Qt::SkipEmptyParts);
    names.sort();
    return names;
}

const QStringList onlyStandard{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"),
                               QStringLiteral("3")};

qsizetype openDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

// A signal mask of the child, without the two signals that the C library reserves.
quint64 signalMask(const char *field)
{
    const QString status =
        runProcess(QStringLiteral("/bin/cat"), {QStringLiteral("/proc/self/status")})
            .standardOutput;
    const QString name = QString::fromLatin1(field) + QLatin1String(":\t");
    bool isNumber = false;
    const quint64 mask =
        status.mid(status.indexOf(name) + name.size(), 16).toULongLong(&isNumber, 16);
    EXPECT_TRUE(isNumber);
    return mask & ~0x180000000ULL;
}

TEST(ChildIsolation, noDescriptorOfOursIsOpenInTheChild)
{
    EXPECT_EQ(childsDescriptors(), onlyStandard);
    EXPECT_EQ(childsDescriptors({.input = QStringLiteral("x")}), onlyStandard);
}

TEST(ChildIsolation, notEvenOneThatIsNotMarkedForClosing)
{
    const int low = ::open("/dev/null", O_RDONLY); // NOLINT(android-cloexec-open): on purpose
    const int high = ::fcntl(low, F_DUPFD, 500);
    ASSERT_GE(low, 0);
    ASSERT_GE(high, 500);
    EXPECT_EQ(childsDescriptors(), onlyStandard);
    ::close(low);
    ::close(high);
}

TEST(ChildIsolation, childrenOfOtherThreadsGetNoneOfItEither)
{
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 10; ++round) {
                EXPECT_EQ(childsDescriptors({.input = QStringLiteral("x")}), onlyStandard);
            }
        });
    }
}

TEST(ChildIsolation, blockedSignalsAreOpenInTheChild)
{
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    const quint64 blocked = signalMask("SigBlk");
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(blocked, 0U);
}

TEST(ChildIsolation, ignoredSignalsAreAtTheirDefaultsInTheChild)
{
    for (const int number : {SIGINT, SIGTERM, SIGPIPE, SIGHUP, SIGQUIT, SIGUSR1}) {
        ASSERT_NE(std::signal(number, SIG_IGN), SIG_ERR);
    }
    EXPECT_EQ(signalMask("SigIgn"), 0U);
    EXPECT_EQ(shell(QStringLiteral("kill -INT $$; exit 1")).status, 128 + SIGINT);
}

TEST(ChildIsolation, aProcessThatIgnoresItsChildrenStillLearnsTheirEnd)
{
    ASSERT_NE(std::signal(SIGCHLD, SIG_IGN), SIG_ERR);
    EXPECT_EQ(shell(QStringLiteral("exit 7")).status, 7);
    struct sigaction noZombies = {};
    noZombies.sa_handler = SIG_DFL;
    noZombies.sa_flags = SA_NOCLDWAIT;
    ASSERT_EQ(::sigaction(SIGCHLD, &noZombies, nullptr), 0);
    EXPECT_EQ(shell(QStringLiteral("exit 7")).status, 7);
}

TEST(ChildIsolation, aSignalToOurGroupDoesNotReachTheChild)
{
    // As when a user presses Ctrl-C in the terminal that we were started in.
    ASSERT_EQ(::setpgid(0, 0), 0);
    ASSERT_NE(std::signal(SIGINT, SIG_IGN), SIG_ERR);
    ASSERT_NE(std::signal(SIGHUP, SIG_IGN), SIG_ERR);
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/sh"),
                   {QStringLiteral("-c"),
                    QStringLiteral("kill -INT -$PPID; kill -HUP -$PPID; sleep 0.1; exit 5")});
    EXPECT_EQ(result.status, 5);
}

TEST(ChildIsolation, theChildLeadsAGroupOfItsOwn)
{
    EXPECT_EQ(shell(QStringLiteral("[ \"$(cut -d' ' -f5 /proc/$$/stat)\" = $$ ]")).status, 0);
}

TEST(ChildIsolation, theEnvironmentIsLaidOverOurs)
{
    qputenv("KEPT", "kept");
    qputenv("CHANGED", "before");
    const ProcessResult result =
        shell(QStringLiteral("echo \"$KEPT,$CHANGED,$ADDED,${EMPTY-unset}\""),
              {.env = {{QStringLiteral("CHANGED"), QStringLiteral("after = \"x\"")},
                       {QStringLiteral("ADDED"), QString::fromUtf8("\xe6\x97\xa5\nb")},
                       {QStringLiteral("EMPTY"), QString()}}});
    EXPECT_EQ(result.standardOutput, QString::fromUtf8("kept,after = \"x\",\xe6\x97\xa5\nb,\n"));
    EXPECT_EQ(qgetenv("CHANGED"), "before");
}

TEST(ChildIsolation, aChangedVariableStandsOnceAndNothingElseIsRemoved)
{
    qputenv("CHANGED", "before");
    qputenv("CHANGED_NOT", "stays");
    const auto variables = [](const ChildProcess::Environment &changes) {
        QStringList entries = runProcess(QStringLiteral("/usr/bin/env"), {}, {.env = changes})
                                  .standardOutput.split(u'\n', Qt::SkipEmptyParts);
        entries.sort();
        return entries;
    };
    QStringList expected = variables({});
    ASSERT_TRUE(expected.contains(QLatin1String("CHANGED=before")));
    expected.replace(static_cast<int>(expected.indexOf(QLatin1String("CHANGED=before"))),
                     QStringLiteral("CHANGED=after"));
    expected.sort();
    EXPECT_EQ(variables({{QStringLiteral("CHANGED"), QStringLiteral("after")}}), expected);
}

TEST(ChildIsolation, aPathVariableReplacesOurs)
{
    const QString folder = QDir::homePath() + QLatin1String("/bin");
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/echo"), folder + QLatin1String("/ourecho")));
    EXPECT_EQ(shell(QStringLiteral("ourecho hi"), {.env = {{QStringLiteral("PATH"), folder}}})
                  .standardOutput,
              QStringLiteral("hi\n"));
    EXPECT_EQ(shell(QStringLiteral("ls /"), {.env = {{QStringLiteral("PATH"), folder}}}).status,
              127);
}

TEST(ChildIsolation, itWorksWithoutStandardDescriptorsOfOurOwn)
{
    std::vector<int> kept;
    for (int standard = 0; standard < 3; ++standard) {
        kept.push_back(::fcntl(standard, F_DUPFD_CLOEXEC, 100));
        ::close(standard);
    }
    const ProcessResult withInput =
        shell(QStringLiteral("cat; echo err >&2; exit 3"), {.input = QStringLiteral("secret")});
    const ProcessResult without = shell(QStringLiteral("cat; echo out; echo err >&2"));
    const QStringList descriptors = childsDescriptors({.input = QStringLiteral("x")});
    for (int standard = 0; standard < 3; ++standard) {
        ::dup2(kept.at(static_cast<size_t>(standard)), standard);
    }
    EXPECT_EQ(withInput.status, 3);
    EXPECT_EQ(withInput.standardOutput, QStringLiteral("secret\n"));
    EXPECT_EQ(withInput.standardError, QStringLiteral("err\n"));
    EXPECT_EQ(without.standardOutput, QStringLiteral("out\n"));
    EXPECT_EQ(without.standardError, QStringLiteral("err\n"));
    EXPECT_EQ(descriptors, onlyStandard);
}

TEST(ChildIsolation, twoHundredRunsLeaveNoDescriptorAndNoChildBehind)
{
    shell(QStringLiteral("true"));
    const qsizetype before = openDescriptors();
    for (int i = 0; i < 50; ++i) {
        shell(QStringLiteral("echo x"));
        runProcess(QStringLiteral("/bin/true"), {}, {.input = QStringLiteral("x")});
        runProcess(QStringLiteral("/nonexistent"), {}, {.input = QStringLiteral("x")});
        runProcess(QStringLiteral("/bin/true"), {}, {.input = QString(100000, u'x')});
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1); // no child at all, not even an ended one
}

TEST(ChildIsolation, whereNoThreadCanBeMadeNoChildIsStarted)
{
    // Few enough processes and threads: now the first thread can't be made, then the second, then
    // the child.
    ASSERT_TRUE(becomeOrdinaryUser());
    const qsizetype descriptors = openDescriptors();
    const QString witness = QDir::homePath() + QLatin1String("/witness");
    rlimit limit = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NPROC, &limit), 0);
    int failures = 0;
    for (limit.rlim_cur = 0; !QFile::exists(witness) && limit.rlim_cur < 10000; ++limit.rlim_cur) {
        ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &limit), 0);
        const ProcessResult result = runProcess(QStringLiteral("/usr/bin/touch"), {witness});
        EXPECT_EQ(result.status == 0, QFile::exists(witness));
        EXPECT_EQ(result.status == -1, !result.standardError.isEmpty());
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1); // no child, not even an ended one
        failures += result.status == -1 ? 1 : 0;
    }
    EXPECT_GE(failures, 3);
    EXPECT_TRUE(QFile::exists(witness));
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(ChildIsolation, noDescriptorsLeftIsAFailureThatIsReported)
{
    // The sanitizer needs descriptors when it meets a type for the first time.
    shell(QStringLiteral("true"));
    rlimit limit = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlim_t before = limit.rlim_cur;
    for (const int room : {0, 1, 2, 3, 4, 5}) {
        limit.rlim_cur =
            static_cast<rlim_t>(::fcntl(0, F_DUPFD_CLOEXEC, 0)) + static_cast<rlim_t>(room);
        ::close(static_cast<int>(limit.rlim_cur) - room);
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        const ProcessResult result = shell(QStringLiteral("true"), {.input = QStringLiteral("x")});
        limit.rlim_cur = before;
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_EQ(result.status, -1) << room;
        EXPECT_FALSE(result.standardError.isEmpty());
    }
}

} // namespace
