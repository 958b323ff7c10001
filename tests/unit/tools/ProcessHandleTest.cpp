#include "tools/ProcessHandle.h"

#include "tests/support/Cycle.h"
#include "tools/ProcessRunner.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>

namespace {

using namespace std::chrono_literals;

// Longer than any test: a wait for it must be interrupted.
constexpr auto patience = 10min;

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

TEST(ProcessHandle, itWaitsTenSecondsForEachEnd)
{
    EXPECT_EQ(StopPatience().byItself, 10s);
    EXPECT_EQ(StopPatience().interrupted, 10s);
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

TEST(ProcessHandle, theSignalIsAnInterruptAndNothingFollowsItInTime)
{
    ProcessHandle handle;
    QStringList lines;
    // A child that handles the signal goes on, and the run still waits for it.
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

TEST(ProcessHandle, aStepThatEndsByItselfAfterAStopIsNotInterrupted)
{
    ProcessHandle handle({.byItself = patience, .interrupted = patience});
    const ProcessResult result = runProcess(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("trap 'exit 7' INT; echo ready; sleep 0.2; exit 5")},
        {.handle = &handle, .stop = StopManner::inTime, .onLine = [&](const QString &) {
             handle.terminate();
         }});
    EXPECT_EQ(result.status, 5);
}

TEST(ProcessHandle, aStepThatGoesOnAfterAStopIsInterrupted)
{
    ProcessHandle handle({.byItself = 1ms, .interrupted = patience});
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/sh"),
                   {QStringLiteral("-c"),
                    QStringLiteral("trap 'exit 7' INT; echo ready; while :; do sleep 0.01; done")},
                   {.handle = &handle, .stop = StopManner::inTime, .onLine = [&](const QString &) {
                        handle.terminate();
                    }});
    EXPECT_EQ(result.status, 7);
}

TEST(ProcessHandle, whatIgnoresTheInterruptIsEndedWithAllThatItStarted)
{
    ProcessHandle handle({.byItself = 1ms, .interrupted = 1ms});
    QStringList processes;
    // A grandchild in the child's group, and one in a group of its own, as restic's rclone is.
    const ProcessResult result = runProcess(
        QStringLiteral("/bin/bash"),
        {QStringLiteral("-c"),
         QStringLiteral("trap '' INT; sleep 600 & echo $!; set -m; (trap '' INT; sleep 600; :) & "
                        "echo $!; echo ready; wait; while :; do sleep 600; done")},
        {.handle = &handle, .onLine = [&](const QString &line) {
             if (line != QLatin1String("ready")) {
                 processes.append(line);
             } else {
                 handle.terminate();
             }
         }});
    EXPECT_EQ(result.status, 128 + SIGKILL);
    ASSERT_EQ(processes.size(), 2);
    for (const QString &process : processes) {
        EXPECT_TRUE(eventually([&] { return hasEnded(process.toLongLong()); }));
    }
}

TEST(ProcessHandle, aGrandchildThatHoldsThePipesAfterItsParentsEndIsEndedByAStopToo)
{
    ProcessHandle handle({.byItself = 1ms, .interrupted = 1ms});
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/sh"),
                   {QStringLiteral("-c"), QStringLiteral("trap '' INT; sleep 600 & echo ready")},
                   {.handle = &handle, .onLine = [&](const QString &) { handle.terminate(); }});
    EXPECT_EQ(result.status, 0);
}

TEST(ProcessHandle, nothingOfAChildIsKeptWhenItHasEnded)
{
    const auto descriptors = [] {
        return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System);
    };
    const QStringList before = descriptors();
    ProcessHandle handle;
    EXPECT_EQ(runProcess(QStringLiteral("/bin/true"), {}, {.handle = &handle}).status, 0);
    EXPECT_EQ(descriptors(), before);
}

TEST(ProcessHandle, theInterruptGoesToTheChildAlone)
{
    ProcessHandle handle;
    QStringList lines;
    runProcess(QStringLiteral("/bin/bash"),
               {QStringLiteral("-c"),
                QStringLiteral("trap 'echo child' INT; "
                               "(trap 'echo grandchild' INT; echo ready; sleep 0.3; :) & "
                               "wait; wait")},
               {.handle = &handle, .onLine = [&](const QString &line) {
                    lines.append(line);
                    if (line == QLatin1String("ready")) {
                        handle.terminate();
                    }
                }});
    EXPECT_EQ(lines, QStringList({QStringLiteral("ready"), QStringLiteral("child")}));
}

TEST(StoppableSteps, aChildWithoutAHandleOfItsOwnIsStoppedAsAStep)
{
    ProcessHandle handle({.byItself = 1ms, .interrupted = patience});
    const StoppableSteps steps(handle);
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/sh"),
                   {QStringLiteral("-c"), QStringLiteral("echo ready; exec sleep 60")},
                   {.onLine = [&](const QString &) { handle.terminate(); }});
    EXPECT_EQ(result.status, interrupted);
}

TEST(StoppableSteps, afterAStopNoStepIsStarted)
{
    const QString witness = QDir::homePath() + QLatin1String("/witness");
    ProcessHandle handle;
    handle.terminate();
    {
        const StoppableSteps steps(handle);
        const ProcessResult result = runProcess(QStringLiteral("/usr/bin/touch"), {witness});
        EXPECT_EQ(result.status, -1);
        EXPECT_EQ(result.standardError, QStringLiteral("Interrotto"));
    }
    EXPECT_FALSE(QFile::exists(witness));
    EXPECT_EQ(runProcess(QStringLiteral("/usr/bin/touch"), {witness}).status, 0);
    EXPECT_TRUE(QFile::exists(witness));
}

TEST(StoppableSteps, concernOneThreadAlone)
{
    ProcessHandle handle;
    handle.terminate();
    const StoppableSteps steps(handle);
    int status = -1;
    std::jthread([&status] { status = runProcess(QStringLiteral("/bin/true"), {}).status; }).join();
    EXPECT_EQ(status, 0);
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
