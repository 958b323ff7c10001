#pragma once

#include "tools/FileDescriptor.h"

#include <QString>

#include <memory>
#include <optional>

/// A secret for a child tool, handed over once through a named pipe.
///
/// rclone gets the key of its configuration from a command that it runs itself. The key must not be
/// in an argument, an environment variable or a file. So it waits in the kernel's buffer of a pipe
/// in the support folder, and the command is this program: `--secret <path>` reads the pipe empty
/// and prints what it held. The object keeps the pipe open, and removes it when it is destroyed,
/// read or not. Neither side ever waits for the other. One object serves one run of a child.
class OneShotSecret
{
public:
    /// A filled pipe; absent when it can't be made.
    static std::unique_ptr<OneShotSecret> create(const QString &secret);

    ~OneShotSecret();
    OneShotSecret(const OneShotSecret &) = delete;
    OneShotSecret &operator=(const OneShotSecret &) = delete;
    OneShotSecret(OneShotSecret &&) = delete;
    OneShotSecret &operator=(OneShotSecret &&) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }

    /// The value for RCLONE_PASSWORD_COMMAND: this executable and the pipe's path, both quoted,
    /// with the option between them. Absent when the system doesn't say where the executable is.
    [[nodiscard]] std::optional<QString> command() const;

    /// The reading end, in a process of its own: prints the secret in the pipe at `path` and exits
    /// with 0. For anything but a filled pipe of the support folder it prints nothing and exits
    /// with 1.
    [[noreturn]] static void deliver(const QString &path);

    /// Removes the pipes and the copies of rclone's configuration that a dead process left in the
    /// support folder: those more than a minute old.
    static void removeStale();

private:
    OneShotSecret(QString path, FileDescriptor descriptor);

    QString m_path;
    FileDescriptor m_descriptor;
};
