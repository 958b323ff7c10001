#include "platform/ExecutablePath.h"

#include <QFile>

#include <array>
#include <climits>

#include <unistd.h>

namespace {

std::optional<QString> linkTarget(const QByteArray &link)
{
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(link.constData(), target.data(), target.size());
    if (length <= 0) {
        return std::nullopt;
    }
    QByteArray path(target.data(), length);
    // The kernel's mark for a file that has no name any more, as after an upgrade.
    static constexpr QByteArrayView deletedMark = " (deleted)";
    if (path.endsWith(deletedMark)) {
        path.chop(deletedMark.size());
    }
    return QFile::decodeName(path);
}

// A thread other than the first has a number of its own kind, under which the system has entries
// for its process as well.
bool isThread(pid_t pid)
{
    QFile file(QStringLiteral("/proc/%1/status").arg(pid));
    const QByteArray status = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArray ofProcess = "\nTgid:\t" + QByteArray::number(pid) + '\n';
    return !status.contains(ofProcess);
}

} // namespace

std::optional<QString> executablePath(pid_t pid)
{
    if (isThread(pid)) {
        return std::nullopt;
    }
    return linkTarget("/proc/" + QByteArray::number(pid) + "/exe");
}

bool wasStartedWith(pid_t pid, QByteArrayView word)
{
    QFile file(QStringLiteral("/proc/%1/cmdline").arg(pid));
    return file.open(QIODevice::ReadOnly) && file.readAll().split('\0').contains(word);
}

std::optional<QString> ownExecutablePath()
{
    return linkTarget("/proc/self/exe");
}
