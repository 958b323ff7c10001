#pragma once

#include "ui/summary/DestinationsSituation.h"

#include <QObject>
#include <QString>

/// The figures and sentences of the destinations page.
namespace DestinationsTexts {

/// A figure of the panel about the space that is needed.
struct Figure
{
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label FINAL)
    Q_PROPERTY(QString value MEMBER value FINAL)
    Q_PROPERTY(QString note MEMBER note FINAL)
    Q_PROPERTY(bool promise MEMBER promise FINAL)

public:
    QString label;
    QString value;
    QString note;
    bool promise = false; ///< the value doesn't rest on a measurement that is complete

    bool operator==(const Figure &) const = default;
};

/// What the panel of a destination shows, whichever of the three it is. Absent texts are empty.
struct Place
{
    Q_GADGET
    Q_PROPERTY(DestinationIDs::DestinationID id MEMBER id FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(QString subtitle MEMBER subtitle FINAL)
    Q_PROPERTY(bool enabled MEMBER enabled FINAL)
    Q_PROPERTY(bool canEnable MEMBER canEnable FINAL)
    Q_PROPERTY(bool hasUsage MEMBER hasUsage FINAL)
    Q_PROPERTY(double used MEMBER used FINAL)
    Q_PROPERTY(double total MEMBER total FINAL)
    Q_PROPERTY(QString usageText MEMBER usageText FINAL)
    Q_PROPERTY(QString free MEMBER free FINAL)
    Q_PROPERTY(QString versions MEMBER versions FINAL)
    Q_PROPERTY(QString stored MEMBER stored FINAL)
    Q_PROPERTY(Notice forecast MEMBER forecast FINAL)

public:
    DestinationID id = DestinationID::Local;
    QString title;
    QString subtitle;
    bool enabled = false;   ///< in use
    bool canEnable = false; ///< has what it needs to be in use
    bool hasUsage = false;
    double used = 0;   ///< bytes; a number as QML has it
    double total = 0;  ///< bytes in all
    QString usageText; ///< the same in words
    QString free;      ///< free bytes on the disk
    QString versions;  ///< number of them
    QString stored;    ///< bytes of the repository
    Notice forecast;   ///< whether the destination will hold

    bool operator==(const Place &) const = default;
};

/// The form by which a server is connected.
struct ServerForm
{
    Q_GADGET
    Q_PROPERTY(QString hostLabel MEMBER hostLabel FINAL)
    Q_PROPERTY(QString hostSample MEMBER hostSample FINAL)
    Q_PROPERTY(bool hasPort MEMBER hasPort FINAL)
    Q_PROPERTY(QString portSample MEMBER portSample FINAL)
    Q_PROPERTY(QString userLabel MEMBER userLabel FINAL)
    Q_PROPERTY(QString secretLabel MEMBER secretLabel FINAL)
    Q_PROPERTY(bool hasKeyFile MEMBER hasKeyFile FINAL)
    Q_PROPERTY(QString pathLabel MEMBER pathLabel FINAL)
    Q_PROPERTY(bool unencrypted MEMBER unencrypted FINAL)

public:
    QString hostLabel;
    QString hostSample; ///< stands in the field while that is empty
    bool hasPort = false;
    QString portSample;
    QString userLabel;
    QString secretLabel;
    bool hasKeyFile = false; ///< a key may take the place of the password
    QString pathLabel;
    bool unencrypted = false; ///< user and password would be readable on the network
    bool complete = false;    ///< has all but the secret
    bool needsSecret = true;

    bool operator==(const ServerForm &) const = default;

    /// Whether a connection can be tried with that secret.
    Q_INVOKABLE [[nodiscard]] bool ready(const QString &secret) const;
};

/// What the first backup will weigh.
Figure firstBackup(const DestinationsSituation &situation);
/// What all versions will weigh one day; absent when only the last one is kept, and while nothing
/// is known that it could rest on.
std::optional<Figure> versions(const DestinationsSituation &situation);
QString measureLabel(const DestinationsSituation &situation);

Place place(DestinationID destination, const DestinationsSituation &situation);
/// Whether the disk of the chosen folder isn't there.
bool isDiskAway(const DestinationsSituation &situation);
/// What the versioning of an S3 bucket means for the backups, a warning where there is none.
/// Absent for other servers, and while it isn't known.
std::optional<Notice> bucketVersioning(const DestinationsSituation &situation);

ServerForm serverForm(const AppConfig &config);
/// The name of a kind of server in the choice of kinds.
QString name(ServerKind kind);

} // namespace DestinationsTexts
