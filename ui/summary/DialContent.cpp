#include "ui/summary/DialContent.h"

#include "state/Fmt.h"
#include "state/Texts.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 secondsOfDay = 86400;
constexpr int minutesOfHour = 60;
constexpr int minutesPerTick = 30;
constexpr double minutesOfDay = 1440;

int minuteOfDay(const QDateTime &moment)
{
    const QTime time = moment.toLocalTime().time();
    return time.isValid() ? time.hour() * minutesOfHour + time.minute() : 0;
}

} // namespace

QSet<int> DialContent::versionTicks(const QList<QDateTime> &versions, const QDateTime &now)
{
    const QDateTime dayAgo = now.addSecs(-secondsOfDay);
    QSet<int> lit;
    for (const QDateTime &version : versions) {
        if (version > dayAgo) {
            lit.insert(minuteOfDay(version) / minutesPerTick);
        }
    }
    return lit;
}

bool DialContent::isLit(int tick, const std::optional<double> &percent,
                        const QSet<int> &versionTicks)
{
    return percent ? static_cast<double>(tick) / tickCount < *percent : versionTicks.contains(tick);
}

double DialContent::nowFraction(const QDateTime &now)
{
    return minuteOfDay(now) / minutesOfDay;
}

QString DialContent::value(const Situation &situation)
{
    if (situation.status) {
        return QString::number(wholePercent(situation.status->percent)) + u'%';
    }
    if (situation.launching) {
        return QStringLiteral("...");
    }
    return situation.lastSuccess ? Fmt::since(situation.lastSuccess->date) : QStringLiteral("--");
}

QString DialContent::caption(const Situation &situation)
{
    if (situation.status) {
        return situation.status->phase;
    }
    return situation.lastSuccess ? Texts::tr("dall'ultimo backup") : Texts::tr("nessun backup");
}

int DialContent::wholePercent(double fraction)
{
    // A status file may hold anything, even NaN.
    static constexpr double all = 100;
    return std::isnan(fraction)
               ? 0
               : static_cast<int>(std::clamp(std::trunc(fraction * all), 0.0, all));
}
