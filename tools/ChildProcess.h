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
/// Its standard output and error are pipes; its standard input is a pipe that already holds the
/// whole input, or the null device. It inherits nothing else: all signals have their defaults, none
/// is blocked, and no other descriptor of ours is open in it. It leads a process group of its own,
/// so that signals from a terminal reach only us, and we decide about the child. Whoever starts it
/// must read both pipes to their ends and call wait() once.
class ChildProcess
{
public:
    /// Name and value of environment variables.
    using Environment = QMap<QString, QString>;

    /// Starts a program. `environment` is added to the one of ChildEnvironment, or replaces what is
    /// there. `input` is followed by a line feed and must fit the buffer of a pipe. Fails with the
    /// system's description.
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

    /// Blocks until the child has ended and gives its exit code; 128 plus the number of the signal
    /// that ended it, as in shells, so that no signal is taken for one of restic's exit codes; -1
    /// when the system doesn't say.
    int wait();

    /// Blocks until the child has ended. wait() still has to be called.
    void awaitEnd() const;

    /// Asks the child to stop, with SIGINT; does nothing when it has ended. The child's own
    /// children get no signal: restic needs its rclone to remove its lock.
    void interrupt();

    /// Kills the child and everything that it has started, with SIGKILL.
    void end();

private:
    const pid_t m_pid;
    FileDescriptor m_standardOutput;
    FileDescriptor m_standardError;
    std::mutex m_mutex; ///< so that no signal goes to a process id that is no longer the child's
    bool m_isRunning = true;
};
