#pragma once

#include "state/AppConfig.h"

/// The settings on disk: config.json in the support folder. Saving replaces the file atomically: of
/// two writers, the file of the last one stays.
namespace ConfigStore {

/// The settings as saved. A key that is missing in the file, as in one of an older version, gets
/// its default. A file that can't be read, or has a wrong type anywhere, gives the defaults for
/// all, and isn't changed before the next save.
AppConfig load();

/// Replaces config.json; false when that failed, and then it is as before.
bool save(const AppConfig &config);

/// Deletes temporary files of a writer that was killed. Only while nobody else saves.
void removeAbandoned();

} // namespace ConfigStore
