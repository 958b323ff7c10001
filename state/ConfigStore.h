#pragma once

#include "state/AppConfig.h"

/// The settings on disk: config.json in the support folder. Two writers are ordered by the atomic
/// replacement alone; the last one wins whole.
namespace ConfigStore {

/// The settings as saved. A key that the file doesn't have takes its default, as in a file of an
/// older version; a file that can't be read, or with a wrong type anywhere, gives all defaults and
/// stays as it is until the next save.
AppConfig load();

/// Replaces config.json; false when that failed, and then it is as before.
bool save(const AppConfig &config);

/// Deletes temporary files of a writer that was killed. Only where nobody else saves.
void removeAbandoned();

} // namespace ConfigStore
