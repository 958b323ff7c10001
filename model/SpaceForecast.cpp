#include "model/SpaceForecast.h"

#include "state/Fmt.h"
#include "state/Texts.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 millisecondsPerDay = 86'400'000;
constexpr qint64 period = 30 * millisecondsPerDay;
constexpr double leastGrowth = 1'000'000; // bytes a day
constexpr double shortDays = 60;
constexpr double longDays = 730;
constexpr double daysPerMonth = 30;
constexpr double daysPerYear = 365;
constexpr double horizonForEver = 1825; // days

qint64 left(const Rclone::Quota &quota)
{
    // A provider's numbers may be too large for the difference.
    return std::max<qint64>(0, std::max<qint64>(0, quota.total) - std::max<qint64>(0, quota.used));
}

/// Rounded down to whole bytes, and to what the type can hold.
qint64 truncated(double bytes)
{
    static constexpr auto most = std::numeric_limits<qint64>::max();
    return bytes >= static_cast<double>(most) ? most : static_cast<qint64>(bytes);
}

} // namespace

std::optional<qint64> SpaceForecast::freeSpace(DestinationID destination) const
{
    if (destination == DestinationID::Local) {
        return localFree;
    }
    const auto &quota = destination == DestinationID::Drive ? driveQuota : serverQuota;
    return quota ? std::optional(left(*quota)) : std::nullopt;
}

std::optional<qint64> SpaceForecast::sourceTotal() const
{
    return sourceTotal(config.sources, sourceSizes);
}

std::optional<qint64> SpaceForecast::sourceTotal(const QStringList &sources,
                                                 const QMap<QString, qint64> &sizes)
{
    qint64 total = 0;
    for (const QString &source : sources) {
        const auto size = sizes.constFind(source);
        if (size == sizes.constEnd()) {
            return std::nullopt;
        }
        total += *size;
    }
    return sources.isEmpty() ? std::nullopt : std::optional(total);
}

std::optional<double> SpaceForecast::growthPerDay(DestinationID destination) const
{
    const QDateTime start = now.addMSecs(-period);
    const qint64 size = repos.value(destination).size.value_or(std::numeric_limits<qint64>::max());
    std::optional<QDateTime> oldest;
    double added = 0;
    for (const RunRecord &record : history) {
        if (record.destination != destination || record.date <= start || !isGood(record.outcome)) {
            continue;
        }
        oldest = record.date;
        if (record.dataAdded < size / 2) {
            added += static_cast<double>(record.dataAdded);
        }
    }
    if (!oldest || oldest->msecsTo(now) < millisecondsPerDay) {
        return std::nullopt;
    }
    return added / (static_cast<double>(oldest->msecsTo(now)) / millisecondsPerDay);
}

std::optional<qint64> SpaceForecast::measuredProjection() const
{
    if (config.keepDays < 0) {
        return std::nullopt;
    }
    const double horizon =
        config.keepDays == 0 ? horizonForEver : static_cast<double>(config.keepDays);
    std::optional<qint64> largest;
    for (const DestinationID destination : allDestinations) {
        const std::optional<qint64> size = repos.value(destination).size;
        const std::optional<double> growth = growthPerDay(destination);
        if (size && growth) {
            largest = std::max(largest.value_or(0),
                               truncated(static_cast<double>(*size) + *growth * horizon));
        }
    }
    return largest;
}

std::optional<Notice> SpaceForecast::forecast(DestinationID destination) const
{
    if (repos.value(destination).snapshots.isEmpty()) {
        return firstBackup(destination);
    }
    return growth(destination);
}

Notice SpaceForecast::growth(DestinationID destination) const
{
    const std::optional<double> growth = growthPerDay(destination);
    if (!growth) {
        return {Texts::tr("La previsione di crescita arriva dopo qualche giorno di backup."),
                false};
    }
    if (*growth < leastGrowth) {
        return {Texts::tr("Crescita trascurabile negli ultimi giorni."), false};
    }
    const QString size = Fmt::byteCount(truncated(*growth));
    const std::optional<qint64> free = freeSpace(destination);
    if (!free) {
        return {Texts::tr("Cresce di circa %1 al giorno.").arg(size), false};
    }
    const double days = static_cast<double>(*free) / *growth;
    if (days < shortDays) {
        return {Texts::tr("Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n "
                          "giorni.",
                          nullptr, static_cast<int>(days))
                    .arg(size),
                true};
    }
    if (days < longDays) {
        return {Texts::tr("Cresce di circa %1 al giorno. Lo spazio libero basta per circa %n "
                          "mesi.",
                          nullptr, static_cast<int>(days / daysPerMonth))
                    .arg(size),
                false};
    }
    const qint64 years = truncated(days / daysPerYear);
    return {Texts::tr("Cresce di circa %1 al giorno. Lo spazio libero basta per circa %2 anni.",
                      nullptr, Texts::count(years))
                .arg(size, QString::number(years)),
            false};
}

std::optional<Notice> SpaceForecast::firstBackup(DestinationID destination) const
{
    const std::optional<qint64> total = sourceTotal();
    const std::optional<qint64> free = freeSpace(destination);
    if (!total || !free) {
        return std::nullopt;
    }
    if (*free >= *total) {
        return Notice{Texts::tr("Spazio sufficiente: dopo il primo backup restano circa %1 "
                                "liberi.")
                          .arg(Fmt::byteCount(*free - *total)),
                      false};
    }
    return Notice{
        Texts::tr("Spazio insufficiente: mancano %1.").arg(Fmt::byteCount(*total - *free)), true};
}
