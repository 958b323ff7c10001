#pragma once

#include "tests/support/Installation.h"
#include "tests/support/Waiting.h"

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <sys/types.h>

/// Whether a process has ended, reaped by its parent or not.
bool hasEnded(qint64 process);

/// The children that a process has now, started by any of its threads.
QList<pid_t> childrenOf(qint64 parent);

/// Kills a process and all that it has started at one moment, as when the machine loses its power.
void killWithAllItStarted(qint64 process);

/// One run of the real program, without a window. What is still running at the object's end is
/// killed, with the tools that it started.
class Cycle
{
public:
    explicit Cycle(QString program = Installation::builtProgram());
    ~Cycle();
    Cycle(const Cycle &) = delete;
    Cycle &operator=(const Cycle &) = delete;
    Cycle(Cycle &&) = delete;
    Cycle &operator=(Cycle &&) = delete;

    /// Starts the program; by default for a backup that the user asked for.
    void start(const QStringList &arguments = {QStringLiteral("--backup"),
                                               QStringLiteral("--manual")});
    /// Starts it through a launcher, which gets the program's path and arguments after its own.
    void startBy(const QString &launcher, const QStringList &arguments);

    /// Waits for the end and gives the exit code; -1 when a signal ended it or it didn't end.
    int finish();
    /// start() and finish().
    int run();

    void send(int signal) const;
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// What it has written since the last call.
    QByteArray output() { return m_process.readAllStandardOutput(); }
    QByteArray errors() { return m_process.readAllStandardError(); }

private:
    QString m_program;
    QProcess m_process;
};
