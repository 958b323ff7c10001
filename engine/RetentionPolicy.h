#pragma once

#include "tools/ResticForget.h"

/// Which versions are kept.
///
/// The last day is kept at the pace of the schedule, the last month by the day, the rest by the
/// week. `keepDays` is a span in days; 0 keeps for ever, and a negative number the last version
/// only.
ResticForget::Policy retentionPolicy(qint64 keepDays, qint64 intervalHours);
