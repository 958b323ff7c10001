#pragma once

#include "model/Settings.h"
#include "model/World.h"

#include <QObject>
#include <QString>

#include <optional>

/// The folder of the local backups and the disk that it is on. It is looked at on another thread,
/// as a folder on a network that doesn't answer holds up whoever asks for it; what was seen last of
/// the same folder holds meanwhile.
class LocalFolder final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool onSystemDisk READ isOnSystemDisk NOTIFY onSystemDiskChanged FINAL)
    Q_PROPERTY(bool known READ isKnown NOTIFY changed FINAL)
    Q_PROPERTY(bool hasVolume READ hasVolume NOTIFY changed FINAL)
    Q_PROPERTY(qint64 free READ free NOTIFY changed FINAL)
    Q_PROPERTY(qint64 total READ total NOTIFY changed FINAL)

public:
    /// `settings` outlives this.
    LocalFolder(World world, Settings &settings, QObject *parent = nullptr);

    /// Whether the folder is there and on the disk of the home folder; false until it was seen.
    [[nodiscard]] bool isOnSystemDisk() const { return m_place && m_place->isBesideHome; }
    /// Whether it was looked at since it is the folder of the settings.
    [[nodiscard]] bool isKnown() const { return m_place.has_value(); }
    /// Whether its disk is there, as far as it was looked at.
    [[nodiscard]] bool hasVolume() const { return volume().has_value(); }
    /// The room on its disk; absent while that isn't there, or not known.
    [[nodiscard]] std::optional<Disks::Volume> volume() const
    {
        return m_place ? m_place->volume : std::nullopt;
    }
    /// Bytes that the user may fill; 0 without a volume.
    [[nodiscard]] qint64 free() const { return volume().value_or(Disks::Volume()).free; }
    /// Bytes of the whole disk; 0 without a volume.
    [[nodiscard]] qint64 total() const { return volume().value_or(Disks::Volume()).total; }

    /// Looks at the folder of the settings, unless a look at that one is under way.
    void look();

Q_SIGNALS:
    void onSystemDiskChanged();
    /// Anything about it is different, the room on its disk included.
    void changed();

private:
    void set(const std::optional<Disks::LocalPlace> &place);

    const World m_world;
    Settings &m_settings;
    std::optional<QString> m_lookingAt;
    std::optional<Disks::LocalPlace> m_place; ///< as it was seen last; absent until then
};
