#include "tests/support/StalledDisk.h"

#include "tests/support/OwnMounts.h"

#include <QDir>
#include <QFile>

#include <utility>

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

StalledDisk::StalledDisk(QString folder)
    : m_folder(std::move(folder))
    , m_server(::open("/dev/fuse", O_RDWR | O_CLOEXEC))
{
    QDir().mkpath(m_folder);
    const QByteArray options = "fd=" + QByteArray::number(m_server) +
                               ",rootmode=40000,user_id=" + QByteArray::number(::geteuid()) +
                               ",group_id=" + QByteArray::number(::getegid());
    m_mounted = m_server >= 0 && takeOwnMounts() &&
                ::mount("stalled", QFile::encodeName(m_folder).constData(), "fuse",
                        MS_NOSUID | MS_NODEV, options.constData()) == 0;
}

StalledDisk::~StalledDisk()
{
    letGo();
    if (m_mounted) {
        ::umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
    }
}

void StalledDisk::letGo()
{
    if (m_server >= 0) {
        ::close(std::exchange(m_server, -1));
    }
}
