#pragma once

#include "state/DestinationID.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <cstdint>
#include <optional>

/// The live state of a running backup, as the engine leaves it for whoever looks. The JSON keys are
/// the fields' names.
struct RunStatus
{
    std::int32_t pid = 0; ///< process id of the engine's process
    QDateTime startedAt;
    DestinationID destination = DestinationID::Local;
    QString phase;      ///< what the person reads
    double percent = 0; ///< a fraction from 0 to 1
    qint64 filesDone = 0;
    qint64 totalFiles = 0;
    qint64 bytesDone = 0;
    qint64 totalBytes = 0;
    std::optional<qint64> secondsRemaining; ///< absent when the tool gives no estimate
    std::optional<QString> currentFile;

    bool operator==(const RunStatus &) const = default;

    /// The status of a run by this process that has just begun.
    static RunStatus starting(DestinationID destination, const QDateTime &startedAt);

    /// Whether the process that wrote this still runs this program for a backup. This very process
    /// doesn't count, nor one of its threads, and neither does a program of another name, or
    /// without a backup, under a recycled process id.
    [[nodiscard]] bool isAlive() const;

    [[nodiscard]] QJsonObject toJSON() const;

    /// Strict: a missing or wrong key gives absent; only the two optional fields may be missing.
    static std::optional<RunStatus> fromJSON(const QJsonObject &object);
};
