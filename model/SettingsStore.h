#pragma once

#include "state/AppConfig.h"

#include <memory>

/// Where the settings are kept.
class SettingsStore
{
public:
    /// The file in the support folder.
    static std::shared_ptr<SettingsStore> real();

    SettingsStore() = default;
    virtual ~SettingsStore() = default;
    SettingsStore(const SettingsStore &) = delete;
    SettingsStore &operator=(const SettingsStore &) = delete;
    SettingsStore(SettingsStore &&) = delete;
    SettingsStore &operator=(SettingsStore &&) = delete;

    /// The settings as saved; the defaults where there are none.
    virtual AppConfig load() = 0;
    /// Replaces them; false when that failed. Waits for the disk.
    virtual bool save(const AppConfig &config) = 0;
    /// Deletes temporary files of a writer that was killed. Only while nobody else saves.
    virtual void removeAbandoned() = 0;
};
