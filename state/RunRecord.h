#pragma once

#include "state/DestinationID.h"
#include "state/Outcome.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include <optional>

/// One entry of the history: a run on one destination, and how it ended. The JSON keys are the
/// fields' names.
struct RunRecord
{
    QUuid id;
    QDateTime date; ///< when the run began
    DestinationID destination = DestinationID::Local;
    Outcome outcome = Outcome::Failed;
    QString message; ///< what the person reads
    qint64 filesNew = 0;
    qint64 filesChanged = 0;
    qint64 dataAdded = 0;        ///< bytes added to the repository
    double duration = 0;         ///< seconds
    std::optional<QString> kind; ///< absent for a backup, "check" for a verification

    bool operator==(const RunRecord &) const = default;

    /// A record of a run that begins at this moment, with a new id.
    static RunRecord starting(DestinationID destination);

    [[nodiscard]] QJsonObject toJSON() const;

    /// Strict: a missing or wrong key gives absent; only `kind` may be missing.
    static std::optional<RunRecord> fromJSON(const QJsonObject &object);
};
