#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <chrono>
#include <optional>

/// A local repository and the mount point of the disk that it was last seen on.
struct MountedRepository
{
    QString path;
    QString mountPoint;

    bool operator==(const MountedRepository &) const = default;
};

/// What the engine remembers from run to run. The keys of the maps are the destinations' raw
/// values, unless noted.
struct EngineState
{
    QMap<QString, QDateTime> lastPrune; ///< last retention run that pruned
    QMap<QString, QDateTime> lastCheck; ///< last verification that came out well
    std::optional<QDateTime> lastAlert; ///< last problem alert, absent when there was none
    /// The local repository, if it lies on a disk of its own; absent when it doesn't, or when that
    /// isn't known.
    std::optional<MountedRepository> localDisk = {};
    /// The latest date of any version of a repository. The key is the repository as restic names
    /// it; without an entry nothing is known of the dates.
    QMap<QString, QDateTime> newestVersion = {};

    bool operator==(const EngineState &) const = default;

    /// Whether a stored date can be right. One that is more than a day after `now` comes from a
    /// clock that was wrong, and counts as absent.
    static bool isCredible(const QDateTime &date, const QDateTime &now);

    /// Whether more than `interval` has passed at `now` since the last time, or there was none.
    static bool isDue(const std::optional<QDateTime> &last, const QDateTime &now,
                      std::chrono::milliseconds interval);
    /// The same for the entry of a destination in one of the maps.
    static bool isDue(const QMap<QString, QDateTime> &dates, const QString &destination,
                      const QDateTime &now, std::chrono::milliseconds interval);

    [[nodiscard]] QJsonObject toJSON() const;

    /// Every key may be missing; a wrong type gives absent.
    static std::optional<EngineState> fromJSON(const QJsonObject &object);
};
