#include "model/SettingsStore.h"

#include "state/ConfigStore.h"

namespace {

class SettingsFile final : public SettingsStore
{
public:
    AppConfig load() override { return ConfigStore::load(); }
    bool save(const AppConfig &config) override { return ConfigStore::save(config); }
    void removeAbandoned() override { ConfigStore::removeAbandoned(); }
};

} // namespace

std::shared_ptr<SettingsStore> SettingsStore::real()
{
    return std::make_shared<SettingsFile>();
}
