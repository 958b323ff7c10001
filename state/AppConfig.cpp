#include "state/AppConfig.h"

#include "state/FieldsJSON.h"
#include "state/Texts.h"

#include <algorithm>
#include <iterator>

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

QList<DestinationID> AppConfig::enabledDestinations() const
{
    QList<DestinationID> enabled;
    std::copy_if(allDestinations.begin(), allDestinations.end(), std::back_inserter(enabled),
                 [this](DestinationID destination) { return isEnabled(destination); });
    return enabled;
}

bool AppConfig::hasDestination() const
{
    return !enabledDestinations().isEmpty();
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
    return FieldsJSON::encoded(*this);
}

std::optional<AppConfig> AppConfig::fromJSON(const QJsonObject &object)
{
    return FieldsJSON::decoded<AppConfig>(object);
}
