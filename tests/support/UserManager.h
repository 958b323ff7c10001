#pragma once

#include "platform/PeriodicJob.h"

#include <QProcess>
#include <QString>
#include <QStringList>

/// A real systemd user manager for the home of the test, in namespaces of its own. All that it
/// started ends with it.
class UserManager
{
public:
    /// Starts it. XDG_RUNTIME_DIR is set for this process too.
    UserManager();
    ~UserManager();
    UserManager(const UserManager &) = delete;
    UserManager &operator=(const UserManager &) = delete;
    UserManager(UserManager &&) = delete;
    UserManager &operator=(UserManager &&) = delete;

    /// Whether it came up; a test that needs it must fail otherwise.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// What it said when it didn't come up.
    [[nodiscard]] QByteArray reason() const;

    /// Starts it again after a stop.
    void start();
    /// Kills it and all that it started at once, as when the machine loses power.
    void stop();

    /// Runs a program beside it, to its end.
    PeriodicJob::Answer run(const QString &path, const QStringList &arguments) const;
    /// run() for a job to use.
    [[nodiscard]] PeriodicJob::RunTool runTool() const;
    /// Runs `systemctl --user` with these words, and gives what it wrote.
    QString systemctl(const QStringList &arguments) const;
    /// A property of a unit, as systemctl prints it.
    [[nodiscard]] QString property(const QString &unit, const QString &name) const;

private:
    [[nodiscard]] bool comesUp();
    void removeControlGroups() const;

    QString m_controlGroups; ///< file that names them
    QProcess m_namespace;
    qint64 m_first = 0; ///< first process in the namespaces, as it is known outside
    bool m_isRunning = false;
};
