#include "platform/ProcessTree.h"

#include <QDir>
#include <QFile>
#include <QMultiHash>
#include <QThread>

#include <algorithm>

#include <csignal>

namespace {

// The fields of a process's stat file behind its name: its state, its parent and more. Empty when
// it has ended. The name is in brackets and may contain brackets itself.
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

// Whether it is stopped or has ended.
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
    // A stopped process starts nothing more, but it may until the signal has reached it.
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
        QThread::msleep(1); // a process that waits for a disk stops only when that answers
    }
    for (const pid_t process : std::as_const(held)) {
        ::kill(process, SIGKILL);
    }
}
