#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <chrono>
#include <optional>

/// What the engine remembers from run to run. The maps go by the destinations' raw values.
struct EngineState
{
    QMap<QString, QDateTime> lastPrune; ///< last retention run that pruned
    QMap<QString, QDateTime> lastCheck; ///< last verification that came out well
    std::optional<QDateTime> lastAlert; ///< last problem alert, absent when there was none

    bool operator==(const EngineState &) const = default;

    /// Whether more than `interval` has passed at `now` since the date of an entry of one of the
    /// maps, or there is no entry. A date in the future makes nothing due.
    static bool isDue(const QMap<QString, QDateTime> &dates, const QString &destination,
                      const QDateTime &now, std::chrono::milliseconds interval);

    [[nodiscard]] QJsonObject toJSON() const;

    /// Every key may be missing; a wrong type gives absent.
    static std::optional<EngineState> fromJSON(const QJsonObject &object);
};
