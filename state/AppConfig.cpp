#include "state/AppConfig.h"

#include "state/JSONReader.h"
#include "state/Texts.h"

#include <QJsonArray>

QString AppConfig::repository(DestinationID destination) const
{
    switch (destination) {
    case DestinationID::Local:
        return localFolder + QLatin1String("/Vellomar.backup");
    case DestinationID::Drive:
        return QLatin1String("rclone:vellomar:") + driveFolder;
    case DestinationID::Server:
        return QLatin1String("rclone:vellomar-server:") + serverPath;
    }
    Q_UNREACHABLE();
}

bool AppConfig::isEnabled(DestinationID destination) const
{
    switch (destination) {
    case DestinationID::Local:
        return localEnabled;
    case DestinationID::Drive:
        return driveEnabled;
    case DestinationID::Server:
        return serverEnabled;
    }
    Q_UNREACHABLE();
}

QStringList AppConfig::defaultExcludes()
{
    return {QStringLiteral("~/.Trash"),
            QStringLiteral("~/Library/Caches"),
            QStringLiteral("~/Library/Logs"),
            QStringLiteral("~/Library/Mobile Documents"),
            QStringLiteral("~/Library/CloudStorage"),
            QStringLiteral("~/Library/Developer/Xcode/DerivedData"),
            QStringLiteral("~/Library/Developer/CoreSimulator"),
            QStringLiteral("~/Library/Containers/com.docker.docker"),
            QStringLiteral("node_modules"),
            QStringLiteral(".pnpm-store")};
}

QList<RetentionOption> AppConfig::retentionOptions()
{
    return {
        {-1, Texts::tr("Solo l'ultima"), Texts::tr("Ultima")},
        {7, Texts::tr("1 settimana"), Texts::tr("1 sett.")},
        {30, Texts::tr("1 mese"), Texts::tr("1 mese")},
        {90, Texts::tr("3 mesi"), Texts::tr("3 mesi")},
        {180, Texts::tr("6 mesi"), Texts::tr("6 mesi")},
        {365, Texts::tr("1 anno"), Texts::tr("1 anno")},
        {730, Texts::tr("2 anni"), Texts::tr("2 anni")},
        {1825, Texts::tr("5 anni"), Texts::tr("5 anni")},
        {0, Texts::tr("Sempre"), Texts::tr("Sempre")},
    };
}

QString AppConfig::retentionLabel() const
{
    for (const RetentionOption &option : retentionOptions()) {
        if (option.days == keepDays) {
            return option.label;
        }
    }
    return Texts::tr("%1 giorni", nullptr, Texts::count(keepDays)).arg(keepDays);
}

QJsonObject AppConfig::toJSON() const
{
    return {
        {QStringLiteral("sources"), QJsonArray::fromStringList(sources)},
        {QStringLiteral("excludes"), QJsonArray::fromStringList(excludes)},
        {QStringLiteral("excludeCaches"), excludeCaches},
        {QStringLiteral("localEnabled"), localEnabled},
        {QStringLiteral("localFolder"), localFolder},
        {QStringLiteral("serverEnabled"), serverEnabled},
        {QStringLiteral("serverKind"), rawValue(serverKind)},
        {QStringLiteral("serverHost"), serverHost},
        {QStringLiteral("serverPort"), serverPort},
        {QStringLiteral("serverUser"), serverUser},
        {QStringLiteral("serverKeyFile"), serverKeyFile},
        {QStringLiteral("serverPath"), serverPath},
        {QStringLiteral("driveEnabled"), driveEnabled},
        {QStringLiteral("driveFolder"), driveFolder},
        {QStringLiteral("driveClientID"), driveClientID},
        {QStringLiteral("driveClientSecret"), driveClientSecret},
        {QStringLiteral("autoBackup"), autoBackup},
        {QStringLiteral("intervalHours"), intervalHours},
        {QStringLiteral("skipOnBattery"), skipOnBattery},
        {QStringLiteral("alertAfterHours"), alertAfterHours},
        {QStringLiteral("keySaved"), keySaved},
        {QStringLiteral("keepDays"), keepDays},
    };
}

std::optional<AppConfig> AppConfig::fromJSON(const QJsonObject &object)
{
    JSONReader reader(object);
    AppConfig config;
    config.sources = reader.texts("sources");
    config.excludes = reader.texts("excludes");
    config.excludeCaches = reader.boolean("excludeCaches");
    config.localEnabled = reader.boolean("localEnabled");
    config.localFolder = reader.text("localFolder");
    config.serverEnabled = reader.boolean("serverEnabled");
    config.serverKind = reader.named("serverKind", ::serverKind);
    config.serverHost = reader.text("serverHost");
    config.serverPort = reader.text("serverPort");
    config.serverUser = reader.text("serverUser");
    config.serverKeyFile = reader.text("serverKeyFile");
    config.serverPath = reader.text("serverPath");
    config.driveEnabled = reader.boolean("driveEnabled");
    config.driveFolder = reader.text("driveFolder");
    config.driveClientID = reader.text("driveClientID");
    config.driveClientSecret = reader.text("driveClientSecret");
    config.autoBackup = reader.boolean("autoBackup");
    config.intervalHours = reader.integer("intervalHours");
    config.skipOnBattery = reader.boolean("skipOnBattery");
    config.alertAfterHours = reader.integer("alertAfterHours");
    config.keySaved = reader.boolean("keySaved");
    config.keepDays = reader.integer("keepDays");
    if (!reader.isGood()) {
        return std::nullopt;
    }
    return config;
}
