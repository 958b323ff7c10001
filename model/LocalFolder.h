#pragma once

#include "state/AppConfig.h"

#include <QObject>
#include <QString>

#include <optional>

/// Where the folder of the local backups is. It is looked at on another thread, as a folder on a
/// network that doesn't answer holds up whoever asks for it; what was seen last holds meanwhile.
class LocalFolder : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether the folder is there and on the disk of the home folder; false until it was seen.
    [[nodiscard]] bool isOnSystemDisk() const { return m_isOnSystemDisk; }

    /// Looks at the folder of these settings, unless a look at that one is under way.
    void look(const AppConfig &config);

    /// Takes that for seen.
    void show(bool isOnSystemDisk);

Q_SIGNALS:
    void changed();

private:
    std::optional<QString> m_lookingAt;
    bool m_isOnSystemDisk = false;
};
