#pragma once

#include "engine/Notifier.h"
#include "state/RunRecord.h"

#include <QList>

/// The notification, at most one a day, of what went wrong in a cycle: a backup that failed, or
/// backups that have been skipped for too long.
class ProblemAlerts
{
public:
    /// `alertAfterHours` is how long backups may be skipped before an alert; a negative
    /// number turns all alerts off.
    ProblemAlerts(qint64 alertAfterHours, Notifier::Send notify);

    /// Looks at the records of a cycle, in the order of its runs. The history has them already.
    void report(const QList<RunRecord> &records) const;

private:
    const qint64 m_alertAfterHours;
    const Notifier::Send m_notify;
};
