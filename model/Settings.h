#pragma once

#include "model/World.h"
#include "state/AppConfig.h"

#include <QObject>

#include <chrono>
#include <functional>

/// The settings in memory, and how they are saved.
///
/// Changes are saved together, a moment after the first of them, on one thread and in their order.
/// After that the schedule is updated if it depends on what has changed. Only the constructor and
/// finish() wait.
class Settings final : public QObject
{
    Q_OBJECT

public:
    /// Reads the settings before it returns.
    explicit Settings(World world, QObject *parent = nullptr);
    /// Saves unsaved changes in the background, and doesn't wait for that.
    ~Settings() override;
    Q_DISABLE_COPY_MOVE(Settings)

    [[nodiscard]] const AppConfig &config() const { return m_config; }
    void setConfig(const AppConfig &config);
    void setKeySaved(bool saved);

    /// Saves unsaved changes without further delay. `done` gets the settings as they are on the
    /// disk after that, and isn't called when this object has been destroyed by then.
    void flush(const std::function<void(const AppConfig &onDisk)> &done);

    /// Saves unsaved changes, and waits for that and for earlier work of the same thread, at most
    /// so long. For the program's end.
    void finish(std::chrono::milliseconds patience);

    /// Brings the schedule in line with the settings, whether they have changed or not.
    void syncSchedule();

Q_SIGNALS:
    void changed(const AppConfig &before);

private:
    void save();
    [[nodiscard]] std::function<bool()> saving();

    const World m_world;
    AppConfig m_config;
    bool m_isUnsaved = false;
    bool m_isDelayed = false;       ///< a timer for the next save is running
    bool m_changesSchedule = false; ///< the schedule depends on unsaved changes
};
