#pragma once

#include "ui/summary/Situation.h"

#include <QDateTime>
#include <QList>
#include <QSet>
#include <QString>

/// What the dial shows: a day of 24 hours in 48 ticks, the first at the top, clockwise, and two
/// texts in the middle.
///
/// While a backup runs the ring fills like a progress bar; otherwise a tick is lit if a version was
/// made in its half-hour within the last 24 hours. Hours are those of the user's time zone.
namespace DialContent {

inline constexpr int tickCount = 48;

/// The ticks of the versions of the last 24 hours; one that is exactly 24 hours old doesn't count.
QSet<int> versionTicks(const QList<QDateTime> &versions, const QDateTime &now);

/// Whether a tick is lit. `percent` is that of the run in progress, from 0 to 1, absent when
/// nothing runs.
bool isLit(int tick, const std::optional<double> &percent, const QSet<int> &versionTicks);

/// Where the current time is on the dial, clockwise from 0 at the top to 1.
double nowFraction(const QDateTime &now);

/// The large text in the middle.
QString value(const Situation &situation);

/// The small text below it.
QString caption(const Situation &situation);

/// A fraction as whole percents, rounded down, so that only 1 gives 100.
int wholePercent(double fraction);

} // namespace DialContent
