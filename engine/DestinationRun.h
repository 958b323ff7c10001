#pragma once

#include "engine/BackupProgress.h"
#include "engine/StatusThrottle.h"
#include "state/RunRecord.h"
#include "tools/ResticBackup.h"

/// One run of a backup: all sources to one destination, with its live status and its retention.
class DestinationRun
{
public:
    /// `handle` is the one by which the cycle is stopped; `throttle` is shared by all its runs.
    DestinationRun(const Restic &restic, ProcessHandle &handle, StatusThrottle &throttle);

    /// Runs once, and says how it ended. No failure comes back otherwise. The record is not in the
    /// history yet.
    [[nodiscard]] RunRecord run();

private:
    /// The way from a reachable destination to the outcome.
    void backUp();
    /// False when all old versions stay, as the new one would be let go.
    [[nodiscard]] bool applyRetention(const ResticBackup::Result &made) const;
    void end(Outcome outcome, const QString &message);

    const Restic &m_restic;
    ProcessHandle &m_handle;
    RunRecord m_record;
    BackupProgress m_progress;
};
