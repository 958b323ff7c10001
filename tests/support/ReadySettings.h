#pragma once

#include "state/AppConfig.h"

/// The settings of a user whose backups are set up: the folder "source" of the home is backed up to
/// the folder "disk", which both are made; the key is saved. Drive and server have their folders,
/// and are not in use.
AppConfig readySettings();
