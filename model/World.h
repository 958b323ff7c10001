#pragma once

#include "model/Background.h"
#include "model/Defaults.h"
#include "model/Desktop.h"
#include "model/Disks.h"
#include "model/EngineFiles.h"
#include "model/KeyStore.h"
#include "model/SettingsStore.h"
#include "model/ToolCalls.h"

#include <memory>

/// All interfaces by which the model reaches what is outside of it. The program hands in the real
/// ones; a gallery hands in prepared ones, by which nothing real can be reached.
///
/// A small value: copies share the same objects. No pointer is null.
struct World
{
    std::shared_ptr<Desktop> desktop;
    std::shared_ptr<KeyStore> keys;
    std::shared_ptr<SettingsStore> settings;
    std::shared_ptr<EngineFiles> engine;
    std::shared_ptr<Defaults> defaults;
    std::shared_ptr<ToolCalls> tools;
    std::shared_ptr<Disks> disks;
    Background background;

    /// The real interfaces, with the given desktop.
    static World real(std::shared_ptr<Desktop> desktop);
};
