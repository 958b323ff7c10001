#pragma once

#include "tools/Restic.h"

#include <QDateTime>
#include <QString>

/// Lets the versions go that the settings no longer keep, after each good backup, and has restic
/// prune the repository when that is due. What it must remember stands in state.json.
class Retention
{
public:
    /// The version that a run has just made.
    struct NewVersion
    {
        QString id;      ///< full; empty when restic named none
        QDateTime begun; ///< when the run began
    };

    /// `handle` is the one by which the cycle is stopped.
    Retention(const Restic &restic, ProcessHandle &handle);

    /// False when the new version itself would go, because another has a later date: then all stay.
    /// A failure is reported nowhere; the next run tries again.
    [[nodiscard]] bool apply(const NewVersion &version) const;

private:
    const Restic &m_restic;
    ProcessHandle &m_handle;
};
