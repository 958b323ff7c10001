#pragma once

#include "state/EngineState.h"
#include "state/RunRecord.h"
#include "state/RunStatus.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// The files that the engine leaves in the support folder and the window reads: status.json (live
/// progress), history.json (past runs), state.json (periodic chores) and backup.log (plain text).
///
/// Nothing here reports a failure: what can't be read is absent, what can't be written is dropped.
/// Readers and the one writer meet only through whole files, so there is no lock; that there is a
/// single engine at a time is the cycle's own business.
namespace StatusStore {

/// How many entries history.json keeps.
inline constexpr qsizetype historyLimit = 300;

/// Replaces status.json.
void write(const RunStatus &status);
/// Deletes status.json; a missing one is no fault.
void clear();
/// Puts a record at the head of history.json and a line at the end of backup.log. A skip that
/// repeats the newest entry of its destination takes that entry's place in the history.
void append(const RunRecord &record);
/// Replaces state.json.
void save(const EngineState &state);

/// Absent when no run left a status, or the file can't be read or decoded.
std::optional<RunStatus> loadStatus();
/// Newest first; empty when the file can't be read or decoded.
QList<RunRecord> loadHistory();
/// The defaults when the file can't be read or decoded.
EngineState loadState();

/// The bytes of status.json and history.json as they stand, for one who looks often and decodes
/// only what has changed; empty when there are none.
QByteArray statusBytes();
QByteArray historyBytes();
/// loadStatus() and loadHistory() from bytes.
std::optional<RunStatus> decodedStatus(const QByteArray &bytes);
QList<RunRecord> decodedHistory(const QByteArray &bytes);

/// Deletes temporary files of a writer that was killed. Only under the cycle's lock.
void removeAbandoned();

} // namespace StatusStore
