#include "model/LocalFolder.h"

#include <utility>

LocalFolder::LocalFolder(World world, Settings &settings, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
{
    connect(&m_settings, &Settings::changed, this, [this](const AppConfig &before) {
        if (before.localFolder != m_settings.config().localFolder) {
            set(std::nullopt); // what was seen of a different folder
            look();
        }
    });
    look();
}

void LocalFolder::look()
{
    const AppConfig &config = m_settings.config();
    const QString folder = config.localFolder;
    if (m_lookingAt == folder) {
        return;
    }
    m_lookingAt = folder;
    m_world.background.run(
        this, [disks = m_world.disks, config] { return disks->localPlace(config); },
        [this, folder](const Disks::LocalPlace &place) {
            if (m_lookingAt != folder) {
                return; // the settings name a different folder by now
            }
            m_lookingAt.reset();
            set(place);
        });
}

void LocalFolder::set(const std::optional<Disks::LocalPlace> &place)
{
    if (m_place == place) {
        return;
    }
    const bool wasOnSystemDisk = isOnSystemDisk();
    m_place = place;
    if (isOnSystemDisk() != wasOnSystemDisk) {
        Q_EMIT onSystemDiskChanged();
    }
    Q_EMIT changed();
}
