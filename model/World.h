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

/// All that the model uses of what lies outside of it. The program hands in the real one; a gallery
/// hands in a prepared one, and nothing that is done there reaches anything real.
///
/// A small value: copies share the same things. None of them is absent.
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

    /// The real one around a desktop.
    static World real(std::shared_ptr<Desktop> desktop);
};
