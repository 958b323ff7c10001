#pragma once

#include "tools/FileDescriptor.h"

#include <QString>

#include <memory>
#include <optional>

/// A secret for a child tool, to be had once, by way of a named pipe.
///
/// rclone gets the key of its configuration from a command that it runs itself. The key must stand
/// in no argument, no environment variable and no file, so it waits in the kernel's buffer of a
/// pipe in the support folder, and the command is this program's own: `--secret <path>` drains the
/// pipe and prints what it held. The object keeps the pipe open; its end removes it, drained or
/// not. Neither side ever waits for the other. One object serves one run of a child.
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
    /// with the option between them. Absent when the system doesn't tell the executable's path.
    [[nodiscard]] std::optional<QString> command() const;

    /// The other end, in a process of its own: prints the secret of the pipe at `path` and exits
    /// with 0. Exits with 1 and prints nothing for anything but a filled pipe of the support
    /// folder.
    [[noreturn]] static void deliver(const QString &path);

    /// Removes pipes, and copies of rclone's configuration, that a dead process left behind: those
    /// of the support folder that are more than a minute old.
    static void removeStale();

private:
    OneShotSecret(QString path, FileDescriptor descriptor);

    QString m_path;
    FileDescriptor m_descriptor;
};
