#pragma once

#include "model/Settings.h"
#include "model/World.h"

#include <QObject>
#include <QString>

#include <optional>

/// Where the folder of the local backups is. It is looked at on another thread, as a folder on a
/// network that doesn't answer holds up whoever asks for it; what was seen last holds meanwhile.
class LocalFolder final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool onSystemDisk READ isOnSystemDisk NOTIFY changed FINAL)

public:
    /// `settings` outlives this.
    LocalFolder(World world, Settings &settings, QObject *parent = nullptr);

    /// Whether the folder is there and on the disk of the home folder; false until it was seen.
    [[nodiscard]] bool isOnSystemDisk() const { return m_isOnSystemDisk; }

    /// Looks at the folder of the settings, unless a look at that one is under way.
    void look();

Q_SIGNALS:
    void changed();

private:
    const World m_world;
    Settings &m_settings;
    std::optional<QString> m_lookingAt;
    bool m_isOnSystemDisk = false;
};
