#include "engine/CycleLock.h"

#include "state/Paths.h"
#include "state/SupportFolder.h"

#include <QFile>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace {

tl::expected<FileDescriptor, QString> openedFile()
{
    const QByteArray path = QFile::encodeName(Paths::supportFile(QStringLiteral("backup.lock")));
    FileDescriptor descriptor(
        ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!descriptor.isOpen()) {
        return tl::unexpected(SupportFolder::words(errno));
    }
    return descriptor;
}

} // namespace

tl::expected<CycleLock, std::optional<QString>> CycleLock::acquire()
{
    auto descriptor = openedFile();
    if (!descriptor) {
        return tl::unexpected(std::optional(descriptor.error()));
    }
    if (::flock(descriptor->get(), LOCK_EX | LOCK_NB) != 0) {
        return tl::unexpected(std::optional<QString>());
    }
    return CycleLock(std::move(*descriptor));
}

std::optional<QString> CycleLock::fault()
{
    if (auto folder = SupportFolder::fault()) {
        return folder;
    }
    const auto descriptor = openedFile();
    return descriptor ? std::nullopt : std::optional(descriptor.error());
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
