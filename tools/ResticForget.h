#pragma once

#include "tools/Restic.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

/// `restic forget`: letting go the versions that a policy doesn't keep. It concerns this program's
/// versions alone, and all those of one machine as one series.
namespace ResticForget {

/// How many of the newest versions are kept: one for each hour, day or week that has any, for so
/// many of them. Absent where the policy doesn't count by that unit; what any unit keeps stays.
struct Policy
{
    std::optional<qint64> last = {}; ///< so many, whatever their dates
    std::optional<qint64> hourly = {};
    std::optional<qint64> daily = {};
    std::optional<qint64> weekly = {};

    bool operator==(const Policy &) const = default;
};

/// What a policy would do.
struct Forecast
{
    QStringList removed;                  ///< full ids
    std::optional<QDateTime> newest = {}; ///< date of the newest version; absent without any

    bool operator==(const Forecast &) const = default;
};

enum class Prune { no, yes };

/// Asks restic what the policy would do, without doing it; absent on any failure.
std::optional<Forecast> forecast(const Restic &restic, const Policy &policy, ProcessHandle *handle);

/// Lets the versions go; with a prune, the data as well that only they needed. False on any
/// failure.
bool run(const Restic &restic, const Policy &policy, Prune prune, ProcessHandle *handle);

} // namespace ResticForget
