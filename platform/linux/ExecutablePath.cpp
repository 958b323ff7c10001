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

} // namespace

std::optional<QString> executablePath(pid_t pid)
{
    return linkTarget("/proc/" + QByteArray::number(pid) + "/exe");
}

std::optional<QString> ownExecutablePath()
{
    return linkTarget("/proc/self/exe");
}
