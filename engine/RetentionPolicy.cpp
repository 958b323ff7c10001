#include "engine/RetentionPolicy.h"

namespace {

constexpr qint64 dailyVersions = 30;
constexpr qint64 weeksOfEver = 5200; // a hundred years

std::optional<qint64> hourlyVersions(qint64 intervalHours)
{
    return intervalHours >= 24 ? std::nullopt : std::optional(24 / qMax(intervalHours, qint64{1}));
}

} // namespace

ResticForget::Policy retentionPolicy(qint64 keepDays, qint64 intervalHours)
{
    if (keepDays < 0) {
        return {.last = 1};
    }
    ResticForget::Policy policy{.hourly = hourlyVersions(intervalHours), .daily = dailyVersions};
    if (keepDays == 0) {
        policy.weekly = weeksOfEver;
    } else if (keepDays > dailyVersions) {
        policy.weekly = keepDays / 7;
    } else {
        policy.daily = keepDays;
    }
    return policy;
}
