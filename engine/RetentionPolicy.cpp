#include "engine/RetentionPolicy.h"

namespace {

constexpr qint64 dailyVersions = 30;
constexpr qint64 weeksOfEver = 5200; // a hundred years

QStringList keep(const char *unit, qint64 count)
{
    return {QLatin1String("--keep-") + QLatin1String(unit), QString::number(count)};
}

QStringList hourly(qint64 intervalHours)
{
    if (intervalHours >= 24) {
        return {};
    }
    return keep("hourly", 24 / qMax(intervalHours, qint64{1}));
}

} // namespace

QStringList retentionPolicy(qint64 keepDays, qint64 intervalHours)
{
    if (keepDays < 0) {
        return keep("last", 1);
    }
    if (keepDays == 0) {
        return hourly(intervalHours) + keep("daily", dailyVersions) + keep("weekly", weeksOfEver);
    }
    QStringList arguments = hourly(intervalHours) + keep("daily", qMin(keepDays, dailyVersions));
    if (keepDays > dailyVersions) {
        arguments += keep("weekly", keepDays / 7);
    }
    return arguments;
}
