#pragma once

#include "ui/summary/Situation.h"

#include <QDateTime>
#include <QList>
#include <QSet>
#include <QString>

/// The face of the dial: a day of 24 hours in 48 ticks, the first at the top, clockwise.
///
/// While a backup runs the ring fills like a progress bar; otherwise a tick shines where a version
/// was made within the last 24 hours, by the time of day alone. Hours are those of the person's
/// time zone.
namespace DialFace {

inline constexpr int tickCount = 48;

/// The ticks of the versions of the last 24 hours. A version just 24 hours old counts no more.
QSet<int> litSlots(const QList<QDateTime> &versions, const QDateTime &now);

/// Whether a tick shines. `percent` is that of the run in progress, from 0 to 1, absent when
/// nothing runs.
bool isLit(int tick, const std::optional<double> &percent, const QSet<int> &litSlots);

/// Where the present moment is on the face, from 0 at the top to 1.
double nowFraction(const QDateTime &now);

/// The large text in the middle.
QString value(const Situation &situation);

/// The small text below it.
QString caption(const Situation &situation);

/// A fraction as whole percents, cut: all of it is 100, and nothing less.
int wholePercent(double fraction);

} // namespace DialFace
