#pragma once

#include "engine/Notifier.h"
#include "tools/Restic.h"

/// The check of a repository, once a week after a good backup of its destination.
class Verification
{
public:
    /// `handle` is the one by which the cycle is stopped.
    Verification(const Restic &restic, ProcessHandle &handle, Notifier::Send notify);

    /// Checks the repository if that is due, and puts into the history how it came out. A failure
    /// is notified each time, and the check is due again after the next good backup; a stopped
    /// check leaves nothing.
    void runIfDue() const;

private:
    const Restic &m_restic;
    ProcessHandle &m_handle;
    const Notifier::Send m_notify;
};
