#include "tests/support/ReadySettings.h"

#include "tests/support/Files.h"

AppConfig readySettings()
{
    AppConfig config;
    config.sources = {homeFolder("source")};
    config.excludes.clear();
    config.localEnabled = true;
    config.localFolder = homeFolder("disk");
    config.driveFolder = QStringLiteral("Vellomar/mac");
    config.serverPath = QStringLiteral("backups/mac");
    config.keySaved = true;
    return config;
}
