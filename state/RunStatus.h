#pragma once

#include "state/DestinationID.h"

#include <QDateTime>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>

/// The live state of a running backup, as the engine writes it to status.json.
struct RunStatus
{
    Q_GADGET
    Q_PROPERTY(int pid MEMBER pid FINAL)
    Q_PROPERTY(QDateTime startedAt MEMBER startedAt FINAL)
    Q_PROPERTY(DestinationIDs::DestinationID destination MEMBER destination FINAL)
    Q_PROPERTY(QString phase MEMBER phase FINAL)
    Q_PROPERTY(double percent MEMBER percent FINAL)
    Q_PROPERTY(qint64 filesDone MEMBER filesDone FINAL)
    Q_PROPERTY(qint64 totalFiles MEMBER totalFiles FINAL)
    Q_PROPERTY(qint64 bytesDone MEMBER bytesDone FINAL)
    Q_PROPERTY(qint64 totalBytes MEMBER totalBytes FINAL)
    // QML has no type for these two; the sentences about a run are made in C++.
    Q_PROPERTY(
        std::optional<qint64> secondsRemaining MEMBER secondsRemaining SCRIPTABLE false FINAL)
    Q_PROPERTY(std::optional<QString> currentFile MEMBER currentFile SCRIPTABLE false FINAL)
    Q_PROPERTY(QString destinationTitle READ destinationTitle STORED false FINAL)

public:
    std::int32_t pid = 0; ///< process id of the engine's process
    QDateTime startedAt;
    DestinationID destination = DestinationID::Local;
    QString phase;      ///< what the user reads
    double percent = 0; ///< a fraction from 0 to 1
    qint64 filesDone = 0;
    qint64 totalFiles = 0;
    qint64 bytesDone = 0;
    qint64 totalBytes = 0;
    std::optional<qint64> secondsRemaining; ///< absent when the tool gives no estimate
    std::optional<QString> currentFile;

    bool operator==(const RunStatus &) const = default;

    [[nodiscard]] QString destinationTitle() const { return title(destination); }

    /// The status of a run by this process that has just begun.
    static RunStatus starting(DestinationID destination, const QDateTime &startedAt);

    /// Whether the process that wrote this still runs this program for a backup. False for the
    /// current process and its threads, and where the process id now belongs to a different
    /// program, or to this program without a backup.
    [[nodiscard]] bool isAlive() const;

    [[nodiscard]] QJsonObject toJSON() const;

    /// Strict: a missing or wrong key gives absent; only the two optional fields may be missing.
    static std::optional<RunStatus> fromJSON(const QJsonObject &object);
};
