#include "engine/CycleLock.h"

#include "state/Paths.h"

#include <QFile>

#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

std::optional<CycleLock> CycleLock::acquire()
{
    const QByteArray path = QFile::encodeName(Paths::supportFile(QStringLiteral("backup.lock")));
    FileDescriptor descriptor(
        ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!descriptor.isOpen() || ::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) {
        return std::nullopt;
    }
    return CycleLock(std::move(descriptor));
}

CycleLock::CycleLock(FileDescriptor descriptor)
    : m_descriptor(std::move(descriptor))
{
}

CycleLock::~CycleLock()
{
    if (m_descriptor.isOpen()) {
        ::flock(m_descriptor.get(), LOCK_UN);
    }
}
