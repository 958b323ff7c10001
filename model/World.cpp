#include "model/World.h"

#include <utility>

World World::real(std::shared_ptr<Desktop> desktop)
{
    return {.desktop = std::move(desktop),
            .keys = KeyStore::real(),
            .settings = SettingsStore::real(),
            .engine = EngineFiles::real(),
            .defaults = Defaults::real(),
            .tools = ToolCalls::real(),
            .disks = Disks::real(),
            .background = Background()};
}
