#pragma once

#include "state/RunRecord.h"
#include "state/RunStatus.h"

#include <QJsonObject>
#include <QString>

#include <chrono>
#include <optional>

/// What one run of `restic backup` tells while it goes: follows its JSON lines, keeps the live
/// status and writes it now and then.
///
/// The lines come on the reader's thread, one after the other, while the cycle's thread waits; that
/// thread looks in here only before the child starts and after it has ended.
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

    /// One line of restic's standard output.
    void handleLine(const QString &line);
    /// Counts the errors that restic reported on its standard error.
    void countErrors(const QString &standardError);

    /// How many files couldn't be read.
    [[nodiscard]] int errorCount() const { return m_errorCount; }
    /// Puts the figures of the last summary into the record; 0 where there are none.
    void summarise(RunRecord &record) const;

    /// The full id of the version that restic made; empty when it reported none.
    [[nodiscard]] QString version() const;

    [[nodiscard]] const RunStatus &status() const { return m_status; }

private:
    void takeStatus(const QJsonObject &message);
    void writeThrottled();

    RunStatus m_status;
    QJsonObject m_summary;
    int m_errorCount = 0;
    WriteTime &m_lastWrite;
};
