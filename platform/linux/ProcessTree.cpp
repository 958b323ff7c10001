#include "platform/ProcessTree.h"

#include <QDir>
#include <QFile>
#include <QMultiHash>

namespace {

// The field behind a process's name, which stands in brackets and may hold some, and its state.
pid_t parentOf(const QString &process)
{
    QFile file(QLatin1String("/proc/") + process + QLatin1String("/stat"));
    const QByteArray stat = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(1).toInt();
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
