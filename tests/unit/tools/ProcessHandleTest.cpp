#include "tools/ProcessHandle.h"

#include "tools/ProcessRunner.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace {

constexpr int interrupted = 128 + SIGINT;

// A shell that says it is ready and then waits to be stopped, a minute at the most.
ProcessResult waitForStop(ProcessHandle &handle, const LineReceiver &onLine)
{
    return runProcess(QStringLiteral("/bin/sh"),
                      {QStringLiteral("-c"), QStringLiteral("echo ready; exec sleep 60")},
                      {.handle = &handle, .onLine = onLine});
}

TEST(ProcessHandle, aNewOneIsNotCancelled)
{
    const ProcessHandle handle;
    EXPECT_FALSE(handle.isCancelled());
}

TEST(ProcessHandle, aRunThatIsNotStoppedIsAsWithoutIt)
{
    ProcessHandle handle;
    EXPECT_EQ(runProcess(QStringLiteral("/bin/true"), {}, {.handle = &handle}).status, 0);
    EXPECT_FALSE(handle.isCancelled());
}

TEST(ProcessHandle, terminateInterruptsTheRunningChild)
{
    ProcessHandle handle;
    const ProcessResult result =
        waitForStop(handle, [&handle](const QString &) { handle.terminate(); });
    EXPECT_EQ(result.status, interrupted);
    EXPECT_TRUE(handle.isCancelled());
}

TEST(ProcessHandle, terminateFromAnotherThreadInterruptsToo)
{
    ProcessHandle handle;
    std::atomic<bool> isReady = false;
    std::jthread stopper([&] {
        isReady.wait(false);
        handle.terminate();
    });
    const ProcessResult result = waitForStop(handle, [&isReady](const QString &) {
        isReady = true;
        isReady.notify_all();
    });
    EXPECT_EQ(result.status, interrupted);
}

TEST(ProcessHandle, aStopBeforeTheStartStopsTheChildAtOnce)
{
    ProcessHandle handle;
    handle.terminate();
    EXPECT_EQ(runProcess(QStringLiteral("/bin/sleep"), {QStringLiteral("60")}, {.handle = &handle})
                  .status,
              interrupted);
}

TEST(ProcessHandle, everyFurtherChildIsStoppedAsWell)
{
    ProcessHandle handle;
    EXPECT_EQ(runProcess(QStringLiteral("/bin/true"), {}, {.handle = &handle}).status, 0);
    handle.terminate();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(
            runProcess(QStringLiteral("/bin/sleep"), {QStringLiteral("60")}, {.handle = &handle})
                .status,
            interrupted);
    }
    EXPECT_TRUE(handle.isCancelled());
}

TEST(ProcessHandle, aStopReachesTheSecondChildOfAHandle)
{
    ProcessHandle handle;
    EXPECT_EQ(runProcess(QStringLiteral("/bin/true"), {}, {.handle = &handle}).status, 0);
    EXPECT_EQ(waitForStop(handle, [&handle](const QString &) { handle.terminate(); }).status,
              interrupted);
}

TEST(ProcessHandle, terminateAfterTheEndOnlyMarksIt)
{
    ProcessHandle handle;
    EXPECT_EQ(runProcess(QStringLiteral("/bin/true"), {}, {.handle = &handle}).status, 0);
    handle.terminate();
    EXPECT_TRUE(handle.isCancelled());
    handle.terminate();
    EXPECT_TRUE(handle.isCancelled());
}

TEST(ProcessHandle, terminateWithoutAnyChildOnlyMarksIt)
{
    ProcessHandle handle;
    handle.terminate();
    EXPECT_TRUE(handle.isCancelled());
}

TEST(ProcessHandle, theSignalIsAnInterruptAndNothingFollowsIt)
{
    ProcessHandle handle;
    QStringList lines;
    // A child that takes the signal for itself goes on, and the run goes on waiting for it.
    const ProcessResult result = runProcess(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"),
         QStringLiteral("trap 'echo INT; got=1' INT; trap 'echo other' TERM HUP; echo ready; "
                        "until [ -n \"$got\" ]; do sleep 0.01; done; sleep 0.2; exit 5")},
        {.handle = &handle, .onLine = [&](const QString &line) {
             lines.append(line);
             if (line == QLatin1String("ready")) {
                 handle.terminate();
             }
         }});
    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(lines, QStringList({QStringLiteral("ready"), QStringLiteral("INT")}));
}

TEST(ProcessHandle, aStopAtAnyMomentStopsTheChild)
{
    // Without a wait between start and stop, the signal comes before, between and after.
    for (int round = 0; round < 30; ++round) {
        ProcessHandle handle;
        std::jthread stopper([&handle] { handle.terminate(); });
        EXPECT_EQ(
            runProcess(QStringLiteral("/bin/sleep"), {QStringLiteral("60")}, {.handle = &handle})
                .status,
            interrupted);
    }
}

TEST(ProcessHandle, aHandleMayOutliveItsChildrenAndServeThreads)
{
    ProcessHandle handle;
    std::jthread reader([&handle] {
        while (!handle.isCancelled()) {
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 5; ++round) {
        runProcess(QStringLiteral("/bin/true"), {}, {.handle = &handle});
    }
    handle.terminate();
    reader.join();
    EXPECT_TRUE(handle.isCancelled());
}

} // namespace
