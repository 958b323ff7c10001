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
    int status = -1; ///< as ChildProcess::wait() gives it; -1 also when no child could be started
                     ///< or when it wrote far too much
    QString standardOutput; ///< empty when the lines went to a receiver
    QString standardError;  ///< the reason when the status is -1
};

/// What a call of a tool can have besides its arguments.
struct ProcessOptions
{
    ChildProcess::Environment env = {}; ///< added to the one of ChildEnvironment
    std::optional<QString> input =
        {};                          ///< a short secret for standard input; a line feed follows it
    ProcessHandle *handle = nullptr; ///< by which the child can be stopped
    StopManner stop = StopManner::atOnce;
    LineReceiver onLine = {}; ///< gets standard output line by line, on a thread of its own
};

/// Runs a program and waits until it has ended and its pipes have been read to their ends. Every
/// child process is started through this. All calls of `onLine` come before it returns.
ProcessResult runProcess(const QString &path, const QStringList &arguments,
                         const ProcessOptions &options = {});

/// While this object lives, each child that this thread starts without a handle belongs to the
/// given one: a stop gives it time to end by itself, and after a stop none is started. Not to be
/// nested.
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

/// Replaces the real runner while this object lives, for tests. Not to be nested.
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
