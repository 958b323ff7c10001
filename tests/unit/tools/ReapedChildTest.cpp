#include "tools/ProcessHandle.h"
#include "tools/ProcessRunner.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>

#include <sys/syscall.h>
#include <unistd.h>

// Once a child is reaped its id may belong to any process.

namespace {

std::atomic<int> signalsSent = 0;

} // namespace

// In place of the C library's, for all of this program.
extern "C" int kill(pid_t process, int signal)
{
    ++signalsSent;
    return static_cast<int>(::syscall(SYS_kill, process, signal));
}

namespace {

TEST(ReapedChild, getsNoSignalAnyMore)
{
    ProcessHandle handle;
    EXPECT_EQ(runProcess(QStringLiteral("/bin/true"), {}, {.handle = &handle}).status, 0);
    handle.terminate();
    handle.terminate();
    EXPECT_EQ(signalsSent, 0);
    EXPECT_TRUE(handle.isCancelled());
}

TEST(ReapedChild, getsNoneFromItsOwnObjectEither)
{
    const auto child = ChildProcess::start(QStringLiteral("/bin/true"), {}, {}, {});
    ASSERT_TRUE(child);
    EXPECT_EQ((*child)->wait(), 0);
    (*child)->interrupt();
    (*child)->end();
    EXPECT_EQ(signalsSent, 0);
}

TEST(ReapedChild, gotItWhileItRan)
{
    ProcessHandle handle;
    const ProcessResult result = runProcess(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("echo ready; exec sleep 60")},
        {.handle = &handle, .onLine = [&handle](const QString &) { handle.terminate(); }});
    EXPECT_EQ(result.status, 128 + SIGINT);
    EXPECT_EQ(signalsSent, 1);
}

} // namespace
