#pragma once

#include <QDateTime>

/// Week of the year of a moment, from 1, in the user's calendar, region and time zone. The region
/// decides on which day a week begins and which week is the first.
int weekOfYear(const QDateTime &moment);
