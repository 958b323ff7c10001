#include "tests/support/SmallDisk.h"

#include <QDir>
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

// Root simply takes a namespace of its own; anybody else becomes root of one first.
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

SmallDisk::SmallDisk(const QString &folder, int kilobytes)
    : m_folder(folder)
{
    QDir().mkpath(folder);
    const QByteArray options = "size=" + QByteArray::number(kilobytes) + "k";
    m_mounted =
        separateMounts() && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
        ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, options.constData()) ==
            0;
}

SmallDisk::~SmallDisk()
{
    if (m_mounted) {
        ::umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
    }
}

void SmallDisk::fill() const
{
    QFile file(m_folder + QLatin1String("/filling"));
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        const QByteArray piece(512, 'x');
        while (file.write(piece) == piece.size()) {
        }
    }
}

void SmallDisk::makeRoom() const
{
    QFile::remove(m_folder + QLatin1String("/filling"));
}

bool SmallDisk::makeReadOnly() const
{
    return ::mount("none", QFile::encodeName(m_folder).constData(), nullptr, MS_REMOUNT | MS_RDONLY,
                   nullptr) == 0;
}
