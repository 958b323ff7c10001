#pragma once

#include "state/RunStatus.h"
#include "tools/ResticBackup.h"

#include <QString>

#include <chrono>
#include <optional>

/// The live status of one run: keeps it and writes it, what restic reports only now and then.
///
/// restic's reports come on the thread that reads its output, while the cycle's thread waits; that
/// thread uses this object only before the child starts and after it has ended.
class BackupProgress
{
public:
    /// Moment of the last throttled write; absent before the first. It is shared by all runs of a
    /// cycle.
    using WriteTime = std::optional<std::chrono::steady_clock::time_point>;

    BackupProgress(DestinationID destination, const QDateTime &startedAt, WriteTime &lastWrite);

    /// Enters a phase and writes the status at once.
    void enter(const QString &phase);
    /// Enters a phase without progress of its own, which counts as all done.
    void enterWhole(const QString &phase);

    /// Takes over how far restic's backup has come.
    void report(const ResticBackup::Status &backup);

    [[nodiscard]] const RunStatus &status() const { return m_status; }

private:
    void writeThrottled();

    RunStatus m_status;
    WriteTime &m_lastWrite;
};
