#include "state/ConfigStore.h"

#include "platform/AtomicFile.h"
#include "state/JSONFile.h"

namespace {

QString configFile()
{
    return Paths::supportFile(QStringLiteral("config.json"));
}

} // namespace

AppConfig ConfigStore::load()
{
    AppConfig defaults;
    const std::optional<QJsonDocument> document = JSONFile::read(configFile());
    if (!document || !document->isObject()) {
        return defaults;
    }
    QJsonObject merged = defaults.toJSON();
    const QJsonObject saved = document->object();
    for (auto entry = saved.constBegin(); entry != saved.constEnd(); ++entry) {
        merged.insert(entry.key(), entry.value());
    }
    return AppConfig::fromJSON(merged).value_or(defaults);
}

bool ConfigStore::save(const AppConfig &config)
{
    return AtomicFile::write(configFile(), JSONFile::encode(QJsonDocument(config.toJSON())));
}

void ConfigStore::removeAbandoned()
{
    AtomicFile::removeAbandoned(configFile());
}
