#include "tests/support/OwnMounts.h"

#include <QByteArray>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

bool writeWhole(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

// Root simply takes a namespace of its own; other users become root of one first.
bool separateMounts()
{
    if (::geteuid() == 0) {
        return ::unshare(CLONE_NEWNS) == 0;
    }
    const QByteArray user = "0 " + QByteArray::number(::geteuid()) + " 1";
    const QByteArray group = "0 " + QByteArray::number(::getegid()) + " 1";
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 &&
           writeWhole(QStringLiteral("/proc/self/setgroups"), "deny") &&
           writeWhole(QStringLiteral("/proc/self/uid_map"), user) &&
           writeWhole(QStringLiteral("/proc/self/gid_map"), group);
}

} // namespace

bool takeOwnMounts()
{
    static const bool taken =
        separateMounts() && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return taken;
}
