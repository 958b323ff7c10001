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
    // The kernel's mark for a file that was deleted or replaced, as by an upgrade.
    static constexpr QByteArrayView deletedMark = " (deleted)";
    if (path.endsWith(deletedMark)) {
        path.chop(deletedMark.size());
    }
    return QFile::decodeName(path);
}

// The number of a thread that isn't its process's first one: /proc has entries of the process under
// it too.
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
