#pragma once

#include "model/World.h"
#include "state/AppConfig.h"

#include <QObject>

#include <chrono>
#include <functional>

/// The live copy of the settings, and its way to the disk.
///
/// Changes are saved together, a moment after the first of them, on one thread and in their order;
/// the schedule follows from there where it depends on what has changed. Nothing here waits, except
/// finish().
class Settings final : public QObject
{
    Q_OBJECT

public:
    /// Reads the settings before it returns.
    explicit Settings(World world, QObject *parent = nullptr);
    /// Hands over what isn't saved yet, and doesn't wait for it.
    ~Settings() override;
    Q_DISABLE_COPY_MOVE(Settings)

    [[nodiscard]] const AppConfig &config() const { return m_config; }
    void setConfig(const AppConfig &config);
    void setKeySaved(bool saved);

    /// Saves what isn't saved yet without further delay. `done` gets the settings as they are on
    /// the disk after that, and isn't called when the owner has gone by then.
    void flush(const std::function<void(const AppConfig &onDisk)> &done);

    /// Saves what isn't saved yet, and waits for that and all that was handed to the same thread,
    /// though at most so long. For the program's end.
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
    bool m_isDelayed = false;       ///< a save comes a moment later
    bool m_changesSchedule = false; ///< by what isn't saved yet
};
