#pragma once

#include "state/DestinationID.h"
#include "state/Outcome.h"

#include <QDateTime>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

/// One entry of the history: a run on one destination, and how it ended.
struct RunRecord
{
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id FINAL)
    Q_PROPERTY(QDateTime date MEMBER date FINAL)
    Q_PROPERTY(DestinationIDs::DestinationID destination MEMBER destination FINAL)
    Q_PROPERTY(Outcomes::Outcome outcome MEMBER outcome FINAL)
    Q_PROPERTY(QString message MEMBER message FINAL)
    Q_PROPERTY(qint64 filesNew MEMBER filesNew FINAL)
    Q_PROPERTY(qint64 filesChanged MEMBER filesChanged FINAL)
    Q_PROPERTY(qint64 dataAdded MEMBER dataAdded FINAL)
    Q_PROPERTY(double duration MEMBER duration FINAL)
    // QML reads `verification` instead.
    Q_PROPERTY(std::optional<QString> kind MEMBER kind SCRIPTABLE false FINAL)
    Q_PROPERTY(bool verification READ isVerification STORED false FINAL)
    Q_PROPERTY(QString destinationTitle READ destinationTitle STORED false FINAL)

public:
    QUuid id;
    QDateTime date; ///< when the run began
    DestinationID destination = DestinationID::Local;
    Outcome outcome = Outcome::Failed;
    QString message; ///< what the user reads
    qint64 filesNew = 0;
    qint64 filesChanged = 0;
    qint64 dataAdded = 0;        ///< bytes added to the repository
    double duration = 0;         ///< seconds
    std::optional<QString> kind; ///< absent for a backup, "check" for a verification

    bool operator==(const RunRecord &) const = default;

    [[nodiscard]] bool isVerification() const { return kind.has_value(); }
    [[nodiscard]] QString destinationTitle() const { return title(destination); }

    /// A record of a run that begins at this moment, with a new id.
    static RunRecord starting(DestinationID destination);

    [[nodiscard]] QJsonObject toJSON() const;

    /// Strict: a missing or wrong key gives absent; only `kind` may be missing.
    static std::optional<RunRecord> fromJSON(const QJsonObject &object);
};
