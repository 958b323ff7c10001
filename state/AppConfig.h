#pragma once

#include "state/DestinationID.h"
#include "state/Paths.h"
#include "state/ServerKind.h"

#include <QJsonObject>
#include <QList>
#include <QObject>
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

/// The user's settings: a plain value, kept in config.json. A new value holds the defaults. The
/// secret of a server is never stored here, but the secret of the user's own Drive client is.
///
/// A setting is a field and its property: config.json and QML have it under the property's name.
struct AppConfig
{
    Q_GADGET
    Q_PROPERTY(QStringList sources MEMBER sources FINAL)
    Q_PROPERTY(QStringList excludes MEMBER excludes FINAL)
    Q_PROPERTY(bool excludeCaches MEMBER excludeCaches FINAL)
    Q_PROPERTY(bool localEnabled MEMBER localEnabled FINAL)
    Q_PROPERTY(QString localFolder MEMBER localFolder FINAL)
    Q_PROPERTY(bool serverEnabled MEMBER serverEnabled FINAL)
    Q_PROPERTY(ServerKinds::ServerKind serverKind MEMBER serverKind FINAL)
    Q_PROPERTY(QString serverHost MEMBER serverHost FINAL)
    Q_PROPERTY(QString serverPort MEMBER serverPort FINAL)
    Q_PROPERTY(QString serverUser MEMBER serverUser FINAL)
    Q_PROPERTY(QString serverKeyFile MEMBER serverKeyFile FINAL)
    Q_PROPERTY(QString serverPath MEMBER serverPath FINAL)
    Q_PROPERTY(bool driveEnabled MEMBER driveEnabled FINAL)
    Q_PROPERTY(QString driveFolder MEMBER driveFolder FINAL)
    Q_PROPERTY(QString driveClientID MEMBER driveClientID FINAL)
    Q_PROPERTY(QString driveClientSecret MEMBER driveClientSecret FINAL)
    Q_PROPERTY(bool autoBackup MEMBER autoBackup FINAL)
    Q_PROPERTY(qint64 intervalHours MEMBER intervalHours FINAL)
    Q_PROPERTY(bool skipOnBattery MEMBER skipOnBattery FINAL)
    Q_PROPERTY(qint64 alertAfterHours MEMBER alertAfterHours FINAL)
    Q_PROPERTY(bool keySaved MEMBER keySaved FINAL)
    Q_PROPERTY(qint64 keepDays MEMBER keepDays FINAL)
    Q_PROPERTY(QString retentionLabel READ retentionLabel STORED false FINAL)
    Q_PROPERTY(bool hasDestination READ hasDestination STORED false FINAL)

public:
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
    QString driveClientID; ///< the user's own OAuth client, empty means rclone's
    QString driveClientSecret;

    bool autoBackup = true;      ///< the schedule is wanted
    qint64 intervalHours = 1;    ///< hours between scheduled runs
    bool skipOnBattery = false;  ///< scheduled runs wait for mains power
    qint64 alertAfterHours = 24; ///< hours without a good backup before an alert; negative is never
    bool keySaved = false;       ///< the user has confirmed that the encryption key is saved
    qint64 keepDays = 730; ///< days that versions are kept; 0 is for ever, negative the last only

    bool operator==(const AppConfig &) const = default;

    /// The repository as restic names it.
    [[nodiscard]] QString repository(DestinationID destination) const;

    /// Whether a destination is in use.
    [[nodiscard]] bool isEnabled(DestinationID destination) const;

    /// The destinations in use, in the order of every run.
    [[nodiscard]] QList<DestinationID> enabledDestinations() const;

    /// Whether any destination is in use.
    [[nodiscard]] bool hasDestination() const;

    /// The choices that the user has, from the shortest to the longest.
    static QList<RetentionOption> retentionOptions();

    /// The long name of the choice in force; a number of days where there is no such choice.
    [[nodiscard]] QString retentionLabel() const;

    [[nodiscard]] QJsonObject toJSON() const;

    /// Strict: all keys must be there with the right types; unknown keys are ignored.
    static std::optional<AppConfig> fromJSON(const QJsonObject &object);

private:
    static QStringList defaultExcludes();
};
