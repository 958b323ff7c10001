#pragma once

#include <QDateTime>

/// Week of the year of a moment, from 1, in the person's own calendar, region and time zone: the
/// region decides on which day a week begins and which week is the first.
int weekOfYear(const QDateTime &moment);
