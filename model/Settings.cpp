#include "model/Settings.h"

#include <QPointer>

#include <utility>

namespace {

/// Whether any setting that the schedule depends on differs.
bool differsInSchedule(const AppConfig &before, const AppConfig &now)
{
    return before.autoBackup != now.autoBackup || before.intervalHours != now.intervalHours ||
           before.hasDestination() != now.hasDestination() || before.keySaved != now.keySaved;
}

void handOverSchedule(const World &world, const AppConfig &config)
{
    // On a lane of its own: the system's tools are slow, and mustn't delay a later save.
    world.background.runInOrder(Background::Lane::Schedule,
                                [tools = world.tools, config] { tools->syncSchedule(config); });
}

} // namespace

Settings::Settings(World world, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_config(m_world.settings->load())
{
}

Settings::~Settings()
{
    if (m_isUnsaved) {
        m_world.background.runInOrder(Background::Lane::Settings, saving());
    }
}

void Settings::setConfig(const AppConfig &config)
{
    static constexpr std::chrono::milliseconds delay(300);
    const AppConfig before = std::exchange(m_config, config);
    if (before == config) {
        return;
    }
    m_isUnsaved = true;
    m_changesSchedule = m_changesSchedule || differsInSchedule(before, config);
    if (!std::exchange(m_isDelayed, true)) {
        m_world.desktop->after(delay, [settings = QPointer(this)] {
            if (settings) {
                settings->m_isDelayed = false;
                settings->save();
            }
        });
    }
    Q_EMIT changed(before);
}

void Settings::setKeySaved(bool saved)
{
    AppConfig config = m_config;
    config.keySaved = saved;
    setConfig(config);
}

void Settings::flush(const std::function<void(const AppConfig &)> &done)
{
    save();
    m_world.background.runInOrder(
        Background::Lane::Settings, this, [store = m_world.settings] { return store->load(); },
        done);
}

void Settings::finish(std::chrono::milliseconds patience)
{
    save();
    m_world.background.waitFor(Background::Lane::Settings, patience);
}

void Settings::syncSchedule()
{
    handOverSchedule(m_world, m_config);
}

void Settings::save()
{
    if (!m_isUnsaved) {
        return;
    }
    m_world.background.runInOrder(Background::Lane::Settings, this, saving(), [this](bool isSaved) {
        // Tried again at the next change.
        m_isUnsaved = m_isUnsaved || !isSaved;
    });
}

/// A function that saves the settings as they are now; false when that failed.
std::function<bool()> Settings::saving()
{
    m_isUnsaved = false;
    return [world = m_world, config = m_config,
            changesSchedule = std::exchange(m_changesSchedule, false)] {
        const bool isSaved = world.settings->save(config);
        if (changesSchedule) {
            handOverSchedule(world, config);
        }
        return isSaved;
    };
}
