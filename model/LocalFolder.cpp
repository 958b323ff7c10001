#include "model/LocalFolder.h"

#include "model/Background.h"
#include "model/Disks.h"

void LocalFolder::look(const AppConfig &config)
{
    const QString folder = config.localFolder;
    if (m_lookingAt == folder) {
        return;
    }
    m_lookingAt = folder;
    Background().run(
        this, [config] { return Disks::real()->holdsBackupsBesideHome(config); },
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
