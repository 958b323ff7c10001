#include "tests/support/Cycle.h"

#include "platform/ProcessTree.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <utility>

namespace {

constexpr int patienceMilliseconds = 120000;

// What the kernel says of a process: its state, its parent and more; empty when there is none.
QList<QByteArray> statFields(const QString &process)
{
    QFile file(QLatin1String("/proc/") + process + QLatin1String("/stat"));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    // They begin behind the name, which stands in brackets and may hold some.
    const qsizetype nameEnd = stat.lastIndexOf(')');
    return nameEnd < 0 ? QList<QByteArray>() : stat.mid(nameEnd + 2).split(' ');
}

} // namespace

bool hasEnded(qint64 process)
{
    const QList<QByteArray> fields = statFields(QString::number(process));
    return fields.isEmpty() || fields.first() == "Z";
}

QList<pid_t> childrenOf(qint64 parent)
{
    QList<pid_t> children;
    const QStringList names = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &name : names) {
        if (statFields(name).value(1).toLongLong() == parent) {
            children.append(name.toInt());
        }
    }
    return children;
}

void killWithAllItStarted(qint64 process)
{
    const auto parent = static_cast<pid_t>(process);
    // Held still, it starts nothing more, and sees no other process end.
    ::kill(parent, SIGSTOP);
    for (const pid_t started : descendants(parent)) {
        ::kill(started, SIGKILL);
    }
    ::kill(parent, SIGKILL);
}

Cycle::Cycle(QString program)
    : m_program(std::move(program))
{
}

Cycle::~Cycle()
{
    if (m_process.state() == QProcess::NotRunning) {
        return;
    }
    killWithAllItStarted(processId());
    m_process.waitForFinished(patienceMilliseconds);
}

void Cycle::start(const QStringList &arguments)
{
    m_process.start(m_program, arguments);
    m_process.waitForStarted(patienceMilliseconds);
}

void Cycle::startBy(const QString &launcher, const QStringList &arguments)
{
    m_process.start(launcher, arguments + QStringList{m_program, QStringLiteral("--backup"),
                                                      QStringLiteral("--manual")});
    m_process.waitForStarted(patienceMilliseconds);
}

int Cycle::finish()
{
    if (m_process.state() != QProcess::NotRunning &&
        !m_process.waitForFinished(patienceMilliseconds)) {
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

int Cycle::run()
{
    start();
    return finish();
}

void Cycle::send(int signal) const
{
    ::kill(static_cast<pid_t>(processId()), signal);
}
