#pragma once

#include "tools/ChildProcess.h"
#include "tools/LineReader.h"
#include "tools/ProcessHandle.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// How a child ended and what it wrote. Both texts are repaired where they aren't UTF-8.
struct ProcessResult
{
    int status = -1; ///< as ChildProcess::wait() gives it; -1 when no child could be started, or it
                     ///< wrote far too much
    QString standardOutput; ///< empty when the lines went to a receiver
    QString standardError;  ///< the reason when the status is -1
};

/// What a call of a tool may want besides its arguments.
struct ProcessOptions
{
    ChildProcess::Environment env = {}; ///< laid over the one of ChildEnvironment
    std::optional<QString> input =
        {};                          ///< a short secret for standard input; a line feed follows it
    ProcessHandle *handle = nullptr; ///< by which the child can be stopped
    StopManner stop = StopManner::atOnce;
    LineReceiver onLine = {}; ///< gets standard output line by line, on a thread of its own
};

/// Runs a program and waits until it has ended and its pipes have been read to their ends. The one
/// road to a child process. All calls of `onLine` come before it returns.
ProcessResult runProcess(const QString &path, const QStringList &arguments,
                         const ProcessOptions &options = {});

/// As long as it lives, each child that this thread starts without a handle of its own is a step of
/// the handle's run: a stop gives it time to end by itself, and none is started after a stop. Not
/// to be nested.
class StoppableSteps
{
public:
    explicit StoppableSteps(ProcessHandle &handle);
    ~StoppableSteps();
    StoppableSteps(const StoppableSteps &) = delete;
    StoppableSteps &operator=(const StoppableSteps &) = delete;
    StoppableSteps(StoppableSteps &&) = delete;
    StoppableSteps &operator=(StoppableSteps &&) = delete;
};

/// Puts another runner in the place of the real one for its own life, for tests. Not to be nested.
class ScopedProcessRunner
{
public:
    using Runner = std::function<ProcessResult(const QString &path, const QStringList &arguments,
                                               const ProcessOptions &options)>;

    explicit ScopedProcessRunner(Runner runner);
    ~ScopedProcessRunner();
    ScopedProcessRunner(const ScopedProcessRunner &) = delete;
    ScopedProcessRunner &operator=(const ScopedProcessRunner &) = delete;
    ScopedProcessRunner(ScopedProcessRunner &&) = delete;
    ScopedProcessRunner &operator=(ScopedProcessRunner &&) = delete;

private:
    Runner m_runner;
};
