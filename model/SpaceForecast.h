#pragma once

#include "model/Notice.h"
#include "model/RepoInfo.h"
#include "state/AppConfig.h"
#include "state/RunRecord.h"
#include "tools/Rclone.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

/// Whether the space at the destinations will suffice, computed from what is known at one moment.
/// All sizes are in bytes.
struct SpaceForecast
{
    QDateTime now;
    AppConfig config;
    QList<RunRecord> history; ///< newest first
    QMap<DestinationID, RepoInfo> repos;
    QMap<QString, qint64> sourceSizes; ///< of the folders that were measured, by path
    std::optional<qint64> localFree; ///< free on the disk of the local folder, absent when unknown
    std::optional<Rclone::Quota> driveQuota;
    std::optional<Rclone::Quota> serverQuota;

    /// Absent when it isn't known.
    [[nodiscard]] std::optional<qint64> freeSpace(DestinationID destination) const;

    /// All sources together; absent unless there are some and each has been measured, as a partial
    /// sum would be misleading.
    [[nodiscard]] std::optional<qint64> sourceTotal() const;
    static std::optional<qint64> sourceTotal(const QStringList &sources,
                                             const QMap<QString, qint64> &sizes);

    /// The average growth of the repository per day, over at most 30 days; absent until the good
    /// runs span a day. A run that added half of the repository or more is taken for a full upload
    /// and isn't counted.
    [[nodiscard]] std::optional<double> growthPerDay(DestinationID destination) const;

    /// The size of the largest repository when its oldest versions begin to be removed (after five
    /// years where none is removed); absent when only the last is kept, or no growth is known.
    [[nodiscard]] std::optional<qint64> measuredProjection() const;

    /// The line about a destination; absent when there is nothing to say.
    [[nodiscard]] std::optional<Notice> forecast(DestinationID destination) const;

private:
    [[nodiscard]] Notice growth(DestinationID destination) const;
    [[nodiscard]] std::optional<Notice> firstBackup(DestinationID destination) const;
};
