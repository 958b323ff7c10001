#include "ui/summary/DestinationsTexts.h"

#include "state/Fmt.h"
#include "state/Texts.h"

#include <limits>

namespace {

constexpr qint64 daysOfMonth = 30;
constexpr qint64 daysOfYear = 365;
constexpr double factorForMonth = 1.2;
constexpr double factorForYear = 1.5;
constexpr double factorForLonger = 2.0;

/// How much all versions weigh against the first one, before anything is known of their growth.
double ruleOfThumb(qint64 keepDays)
{
    if (keepDays >= 1 && keepDays <= daysOfMonth) {
        return factorForMonth;
    }
    return keepDays > daysOfMonth && keepDays <= daysOfYear ? factorForYear : factorForLonger;
}

/// Rounded down to whole bytes, and to what the type can hold.
qint64 product(qint64 bytes, double factor)
{
    static constexpr auto most = std::numeric_limits<qint64>::max();
    const double result = static_cast<double>(bytes) * factor;
    return result >= static_cast<double>(most) ? most : static_cast<qint64>(result);
}

/// How long versions are kept. For ever counts as five years, as in the forecast.
QString horizon(const AppConfig &config)
{
    return config.keepDays == 0 ? Texts::tr("5 anni") : config.retentionLabel();
}

QString subtitle(DestinationID destination, const DestinationsSituation &situation)
{
    const AppConfig &config = situation.config();
    switch (destination) {
    case DestinationID::Local:
        return config.localFolder.isEmpty() ? Texts::tr("Nessun disco scelto") : config.localFolder;
    case DestinationID::Drive:
        return situation.drive.connected ? Texts::tr("Account collegato")
                                         : Texts::tr("Account non collegato");
    case DestinationID::Server:
        return situation.server.connected
                   ? Texts::tr("%1 · %2").arg(DestinationsTexts::name(config.serverKind),
                                              config.serverHost)
                   : Texts::tr("Non collegato");
    }
    return {};
}

bool canEnable(DestinationID destination, const DestinationsSituation &situation)
{
    switch (destination) {
    case DestinationID::Local:
        return !situation.config().localFolder.isEmpty();
    case DestinationID::Drive:
        return situation.drive.connected;
    case DestinationID::Server:
        return situation.server.connected;
    }
    return false;
}

std::optional<Rclone::Quota> usage(DestinationID destination,
                                   const DestinationsSituation &situation)
{
    switch (destination) {
    case DestinationID::Local:
        return situation.config().localFolder.isEmpty() ? std::nullopt : situation.localVolume;
    case DestinationID::Drive:
        return situation.drive.quota;
    case DestinationID::Server:
        return situation.server.quota;
    }
    return std::nullopt;
}

QString hostSample(ServerKind kind)
{
    switch (kind) {
    case ServerKind::Webdav:
        return QStringLiteral("https://nas.example.org/remote.php/dav/files/utente");
    case ServerKind::S3:
        return QStringLiteral("https://s3.example.org");
    case ServerKind::Sftp:
    case ServerKind::Smb:
        break;
    }
    return QStringLiteral("nas.example.org");
}

QString hostLabel(ServerKind kind)
{
    switch (kind) {
    case ServerKind::Webdav:
        return Texts::tr("URL");
    case ServerKind::S3:
        return Texts::tr("Endpoint");
    case ServerKind::Sftp:
    case ServerKind::Smb:
        break;
    }
    return Texts::tr("Indirizzo");
}

QString portSample(ServerKind kind)
{
    switch (kind) {
    case ServerKind::Sftp:
        return QStringLiteral("22");
    case ServerKind::Smb:
        return QStringLiteral("445");
    case ServerKind::Webdav:
    case ServerKind::S3:
        break;
    }
    return {};
}

} // namespace

DestinationsTexts::Figure DestinationsTexts::firstBackup(const DestinationsSituation &situation)
{
    const QString label = Texts::tr("Primo backup");
    const QString note =
        Texts::tr("Peso delle cartelle, tolte le esclusioni. È compresso: di solito occupa meno.");
    if (situation.measuring) {
        return {label, Texts::tr("fino a %1").arg(Fmt::byteCount(situation.soFar)),
                Texts::tr("Misura in corso..."), true};
    }
    if (const std::optional<qint64> total = situation.space.sourceTotal()) {
        return {label, Fmt::byteCount(*total), note, false};
    }
    return {label, Texts::tr("Da misurare"), note, true};
}

std::optional<DestinationsTexts::Figure>
DestinationsTexts::versions(const DestinationsSituation &situation)
{
    const AppConfig &config = situation.config();
    if (config.keepDays < 0) {
        return std::nullopt;
    }
    const QString label = Texts::tr("Con %1 di versioni").arg(horizon(config));
    if (const std::optional<qint64> bytes = situation.space.measuredProjection()) {
        return Figure{label, Texts::tr("circa %1").arg(Fmt::byteCount(*bytes)),
                      Texts::tr("Stima dalla crescita misurata nei backup recenti."), false};
    }
    if (const std::optional<qint64> total = situation.space.sourceTotal()) {
        return Figure{label,
                      Texts::tr("circa %1")
                          .arg(Fmt::byteCount(product(*total, ruleOfThumb(config.keepDays)))),
                      Texts::tr("Regola pratica. Dopo qualche giorno di backup diventa una stima "
                                "sui tuoi file."),
                      true};
    }
    return std::nullopt;
}

QString DestinationsTexts::measureLabel(const DestinationsSituation &situation)
{
    return situation.space.sourceTotal() ? Texts::tr("Misura di nuovo")
                                         : Texts::tr("Misura le cartelle");
}

DestinationsTexts::Place DestinationsTexts::place(DestinationID destination,
                                                  const DestinationsSituation &situation)
{
    Place place;
    place.id = destination;
    place.title = title(destination);
    place.subtitle = subtitle(destination, situation);
    place.enabled = situation.config().isEnabled(destination);
    place.canEnable = canEnable(destination, situation);
    if (const auto used = usage(destination, situation)) {
        place.hasUsage = true;
        place.used = static_cast<double>(used->used);
        place.total = static_cast<double>(used->total);
        place.usageText = Texts::tr("%1 usati di %2")
                              .arg(Fmt::byteCount(used->used), Fmt::byteCount(used->total));
        if (destination == DestinationID::Local) {
            place.free = Fmt::byteCount(used->total - used->used);
        }
    }
    const auto repository = situation.space.repos.constFind(destination);
    if (repository != situation.space.repos.constEnd()) {
        // While it is read for the first time, and where it can't be, their number isn't known.
        if (!repository->snapshots.isEmpty() || !(repository->error || repository->loading)) {
            place.versions = Fmt::number(repository->snapshots.size());
        }
        if (repository->size) {
            place.stored = Fmt::byteCount(*repository->size);
        }
    }
    place.forecast = situation.space.forecast(destination).value_or(Notice());
    return place;
}

bool DestinationsTexts::isDiskAway(const DestinationsSituation &situation)
{
    return !situation.config().localFolder.isEmpty() && situation.localKnown &&
           !situation.localVolume;
}

std::optional<Notice> DestinationsTexts::bucketVersioning(const DestinationsSituation &situation)
{
    const Connection &server = situation.server;
    if (!server.connected || situation.config().serverKind != ServerKind::S3 ||
        server.versioning.isEmpty()) {
        return std::nullopt;
    }
    if (server.versioning == QLatin1String("Enabled")) {
        return Notice{Texts::tr("Versioning attivo sul bucket: un backup cancellato resta "
                                "recuperabile dal server."),
                      false};
    }
    return Notice{Texts::tr("Versioning non attivo sul bucket. Con versioning e Object Lock i "
                            "backup non si possono eliminare nemmeno con le credenziali di questo "
                            "Mac."),
                  true};
}

DestinationsTexts::ServerForm DestinationsTexts::serverForm(const AppConfig &config)
{
    const ServerKind kind = config.serverKind;
    const bool isSftp = kind == ServerKind::Sftp;
    const QString host = config.serverHost.trimmed();
    return {
        .hostLabel = hostLabel(kind),
        .hostSample = hostSample(kind),
        .hasPort = hasPort(kind),
        .portSample = portSample(kind),
        .userLabel = userLabel(kind),
        .secretLabel = secretLabel(kind),
        .hasKeyFile = isSftp,
        .pathLabel = pathLabel(kind),
        // The other kinds have a transport of their own.
        .unencrypted = (kind == ServerKind::Webdav || kind == ServerKind::S3) &&
                       host.startsWith(QLatin1String("http://"), Qt::CaseInsensitive),
        .complete = !host.isEmpty() && (isSftp || !config.serverUser.isEmpty()),
        .needsSecret = !isSftp || config.serverKeyFile.isEmpty(),
    };
}

bool DestinationsTexts::ServerForm::ready(const QString &secret) const
{
    return complete && (!needsSecret || !secret.isEmpty());
}

QString DestinationsTexts::name(ServerKind kind)
{
    switch (kind) {
    case ServerKind::Sftp:
        return Texts::tr("SFTP");
    case ServerKind::Webdav:
        return Texts::tr("WebDAV");
    case ServerKind::S3:
        return Texts::tr("S3");
    case ServerKind::Smb:
        return Texts::tr("SMB");
    }
    return {};
}
