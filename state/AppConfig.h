#pragma once

#include "state/DestinationID.h"
#include "state/Paths.h"
#include "state/ServerKind.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// One choice of how long versions are kept.
struct RetentionOption
{
    qint64 days; ///< the value of keepDays
    QString label;
    QString shortLabel;
};

/// The person's settings: a plain value, kept in config.json under the fields' names. A new value
/// holds the defaults of this moment. The secret of a server is never here; the secret of a Drive
/// client of one's own is.
struct AppConfig
{
    QStringList sources = {Paths::home(), QStringLiteral("/Applications")}; ///< absolute folders
    QStringList excludes = defaultExcludes(); ///< restic's patterns; a leading ~ is the home
    bool excludeCaches = true;                ///< leave out folders marked as caches

    bool localEnabled = false;
    QString localFolder; ///< folder on the chosen disk that holds the repository's folder

    bool serverEnabled = false;
    ServerKind serverKind = ServerKind::Sftp;
    QString serverHost;    ///< name or address; the endpoint for webdav and s3
    QString serverPort;    ///< empty means the transport's own
    QString serverUser;    ///< user name, or access key for s3
    QString serverKeyFile; ///< private key for sftp, empty when there is none
    QString serverPath = QLatin1String("Vellomar/") + Paths::hostname();

    bool driveEnabled = false;
    QString driveFolder = QLatin1String("Vellomar/") + Paths::hostname();
    QString driveClientID; ///< OAuth client of one's own, empty means rclone's
    QString driveClientSecret;

    bool autoBackup = true;      ///< the schedule is wanted
    qint64 intervalHours = 1;    ///< hours between scheduled runs
    bool skipOnBattery = false;  ///< scheduled runs wait for mains power
    qint64 alertAfterHours = 24; ///< hours without a good backup before an alert; negative is never
    bool keySaved = false;       ///< the person has confirmed that the encryption key is saved
    qint64 keepDays = 730; ///< days that versions are kept; 0 is for ever, negative the last only

    bool operator==(const AppConfig &) const = default;

    /// The repository as restic names it.
    [[nodiscard]] QString repository(DestinationID destination) const;

    /// Whether a destination is in use.
    [[nodiscard]] bool isEnabled(DestinationID destination) const;

    /// The choices that the person has, from the shortest to the longest.
    static QList<RetentionOption> retentionOptions();

    /// The long name of the choice in force; a number of days where there is no such choice.
    [[nodiscard]] QString retentionLabel() const;

    [[nodiscard]] QJsonObject toJSON() const;

    /// Strict: all keys must be there with the right types; others are passed over.
    static std::optional<AppConfig> fromJSON(const QJsonObject &object);

private:
    static QStringList defaultExcludes();
};
