#include "platform/ProcessTree.h"

#include <QDir>
#include <QFile>
#include <QMultiHash>
#include <QThread>

#include <algorithm>

#include <csignal>

namespace {

// The fields behind a process's name, which stands in brackets and may hold some: its state, its
// parent and more. Empty when it has ended.
QByteArrayList fieldsOf(const QString &process)
{
    QFile file(QLatin1String("/proc/") + process + QLatin1String("/stat"));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ');
}

pid_t parentOf(const QString &process)
{
    return fieldsOf(process).value(1).toInt();
}

// Stopped, or at its end.
bool isStill(pid_t process)
{
    const QByteArray state = fieldsOf(QString::number(process)).value(0);
    return state.isEmpty() || QByteArrayView("TtZX").contains(state);
}

} // namespace

QList<pid_t> descendants(pid_t ancestor)
{
    QMultiHash<pid_t, pid_t> children;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &entry : entries) {
        if (const pid_t process = entry.toInt(); process > 0) {
            children.insert(parentOf(entry), process);
        }
    }
    QList<pid_t> found = children.values(ancestor);
    for (qsizetype i = 0; i < found.size(); ++i) {
        found.append(children.values(found.at(i)));
    }
    return found;
}

void killTree(pid_t ancestor)
{
    // Stopped, a process starts nothing more. The signal takes a moment, in which it may.
    constexpr int looks = 100;
    QList<pid_t> held;
    QList<pid_t> found{ancestor};
    for (int look = 0; look < looks; ++look) {
        for (const pid_t process : std::as_const(found)) {
            ::kill(process, SIGSTOP);
        }
        held.append(found);
        const bool isAll = std::all_of(held.cbegin(), held.cend(), isStill);
        found = descendants(ancestor);
        found.removeIf([&](pid_t process) { return held.contains(process); });
        if (isAll && found.isEmpty()) {
            break;
        }
        QThread::msleep(1); // one that waits for a disk stops when it gets an answer
    }
    for (const pid_t process : std::as_const(held)) {
        ::kill(process, SIGKILL);
    }
}
