#include "model/LocalFolder.h"

#include "model/Background.h"
#include "state/LocalDisk.h"
#include "state/Paths.h"

#include <QFileInfo>

namespace {

bool isOnHomesDisk(const AppConfig &config)
{
    const QString &folder = config.localFolder;
    return !folder.isEmpty() && QFileInfo::exists(folder) &&
           !LocalDisk::isAway(config.repository(DestinationID::Local)) &&
           Paths::volume(folder) == Paths::volume(Paths::home());
}

} // namespace

void LocalFolder::look(const AppConfig &config)
{
    const QString folder = config.localFolder;
    if (m_lookingAt == folder) {
        return;
    }
    m_lookingAt = folder;
    Background().run(
        this, [config] { return isOnHomesDisk(config); },
        [this, folder](bool isOnSystemDisk) {
            if (m_lookingAt == folder) {
                m_lookingAt.reset();
                show(isOnSystemDisk);
            }
        });
}

void LocalFolder::show(bool isOnSystemDisk)
{
    if (m_isOnSystemDisk != isOnSystemDisk) {
        m_isOnSystemDisk = isOnSystemDisk;
        Q_EMIT changed();
    }
}
