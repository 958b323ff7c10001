#pragma once

#include "engine/Notifier.h"
#include "engine/StatusThrottle.h"
#include "platform/PowerSource.h"
#include "state/AppConfig.h"
#include "state/RunRecord.h"
#include "tools/ProcessHandle.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

/// One backup cycle over all destinations that are in use.
///
/// Built for one cycle from the settings of the moment. No failure crosses its operations: each
/// ends in a RunRecord whose message the user reads. A destination's failure never stops the
/// others. The cycle runs on one thread and waits there while a child runs. A stop comes from any
/// other thread, through the handle: it interrupts backup, retention and check at once, and gives
/// each other tool some seconds to end by itself.
class BackupEngine
{
public:
    /// `manual` says that the user asked for this run. `onBattery` answers whether the machine runs
    /// on battery now, `notify` reports a problem to the user.
    BackupEngine(bool manual, AppConfig config, std::shared_ptr<ProcessHandle> handle,
                 std::function<bool()> onBattery = runsOnBattery,
                 Notifier::Send notify = Notifier::send);

    /// Runs the cycle and gives the process's exit code: 1 when the key can't be read or a
    /// destination failed, otherwise 0. Silently 0 while a different cycle runs.
    int runAll();

private:
    int runGated();
    int runDestinations(const QList<DestinationID> &destinations, const QString &password);

    /// Backs up all sources to one destination.
    RunRecord runOne(DestinationID destination, const QString &password);
    /// Checks the repository if that is due, and records how it came out.
    void verifyIfDue(DestinationID destination, const QString &password);
    /// Reports to the user, at most once a day, what went wrong in a cycle that wasn't stopped.
    void notifyProblems(const QList<RunRecord> &records);

    const bool m_manual;
    const AppConfig m_config;
    const std::shared_ptr<ProcessHandle> m_handle;
    const std::function<bool()> m_onBattery;
    const Notifier::Send m_notify;
    StatusThrottle m_statusThrottle;
};
