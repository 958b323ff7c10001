#include "engine/RepositoryVolume.h"

#include "state/LocalDisk.h"
#include "state/Paths.h"

#include <QFile>

#include <sys/stat.h>

RepositoryVolume::RepositoryVolume(const Restic &restic)
{
    if (restic.dest != DestinationID::Local) {
        return;
    }
    m_repository = restic.config.repository(restic.dest);
    m_volume = present();
    if (m_volume) {
        LocalDisk::remember(m_repository);
    }
}

bool RepositoryVolume::isStillThere() const
{
    return m_repository.isEmpty() || (m_volume && present() == m_volume);
}

std::optional<RepositoryVolume::Volume> RepositoryVolume::present() const
{
    const std::optional<QString> mountPoint = Paths::volume(m_repository);
    struct stat folder = {};
    if (!mountPoint || LocalDisk::isAway(m_repository) ||
        ::stat(QFile::encodeName(*mountPoint).constData(), &folder) != 0) {
        return std::nullopt;
    }
    return Volume{*mountPoint, folder.st_dev};
}
