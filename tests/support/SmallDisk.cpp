#include "tests/support/SmallDisk.h"

#include "tests/support/OwnMounts.h"

#include <QDir>
#include <QFile>

#include <sys/mount.h>

SmallDisk::SmallDisk(const QString &folder, int kilobytes)
    : m_folder(folder)
{
    QDir().mkpath(folder);
    const QByteArray options = "size=" + QByteArray::number(kilobytes) + "k";
    m_mounted = takeOwnMounts() && ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs",
                                           0, options.constData()) == 0;
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
