#pragma once

#include "tools/FileDescriptor.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>
#include <optional>

#include <sys/types.h>

#include <tl/expected.hpp>

/// One running child, from its start to its end.
///
/// It has pipes on its standard output and error, and on its standard input either a pipe that
/// already holds the whole input or the null device. It inherits nothing else: signals are at their
/// defaults, none is blocked, and no other descriptor of ours is open in it. It leads a process
/// group of its own, so that what a terminal sends to ours reaches it by way of us alone. Whoever
/// starts it reads both pipes to their ends and calls wait() once.
class ChildProcess
{
public:
    /// Name and value of environment variables.
    using Environment = QMap<QString, QString>;

    /// Starts a program. `environment` is laid over the one of ChildEnvironment; `input` gets a
    /// line feed behind it and must fit the buffer of a pipe. Fails with the system's description.
    static tl::expected<std::shared_ptr<ChildProcess>, QString>
    start(const QString &path, const QStringList &arguments, const Environment &environment,
          const std::optional<QString> &input);

    ChildProcess(pid_t pid, FileDescriptor standardOutput, FileDescriptor standardError);
    ~ChildProcess() = default;
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;
    ChildProcess(ChildProcess &&) = delete;
    ChildProcess &operator=(ChildProcess &&) = delete;

    [[nodiscard]] int standardOutput() const { return m_standardOutput.get(); }
    [[nodiscard]] int standardError() const { return m_standardError.get(); }

    /// Blocks until the child has ended. Gives its exit code, or 128 and the signal's number when a
    /// signal ended it, as shells do: so that no signal is taken for one of restic's exit codes;
    /// -1 when the system doesn't tell.
    int wait();

    /// Blocks until the child has ended, and leaves it to wait() to say how.
    void awaitEnd() const;

    /// Asks the child to stop, with SIGINT. Nothing happens when it has ended. What it has started
    /// is not asked: restic leaves no lock behind only as long as its rclone goes on.
    void interrupt();

    /// Ends the child and all that it has started, with SIGKILL.
    void end();

private:
    const pid_t m_pid;
    FileDescriptor m_standardOutput;
    FileDescriptor m_standardError;
    std::mutex m_mutex; ///< keeps signals from a process id that is no longer the child's
    bool m_isRunning = true;
};
