#pragma once

#include "engine/StatusThrottle.h"
#include "state/RunStatus.h"
#include "tools/ResticBackup.h"

#include <QString>

/// The live status of one run, and the writing of it.
///
/// report() is called on the thread that reads restic's output, while the cycle's thread waits for
/// restic; that thread calls the rest before restic starts and after it has ended.
class BackupProgress
{
public:
    /// `throttle` holds back what comes through report(), and is shared by all runs of a cycle.
    BackupProgress(DestinationID destination, const QDateTime &startedAt, StatusThrottle &throttle);

    /// Enters a phase and writes the status at once.
    void enter(const QString &phase);
    /// Enters a phase without progress of its own, which counts as all done.
    void enterWhole(const QString &phase);

    /// Takes over how far restic's backup has come, and writes it when it is time.
    void report(const ResticBackup::Status &backup);

    [[nodiscard]] const RunStatus &status() const { return m_status; }

private:
    RunStatus m_status;
    StatusThrottle &m_throttle;
};
