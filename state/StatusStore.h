#pragma once

#include "state/EngineState.h"
#include "state/RunRecord.h"
#include "state/RunStatus.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// The files that the engine writes to the support folder and the window reads: status.json (live
/// progress), history.json (past runs), state.json (periodic chores) and backup.log (plain text).
///
/// Nothing here reports a failure: what can't be read is absent, what can't be written is dropped.
/// Files are replaced atomically, so readers need no lock; the engine's cycle sees to it that there
/// is one writer at a time.
namespace StatusStore {

/// How many entries history.json keeps.
inline constexpr qsizetype historyLimit = 300;

/// Replaces status.json.
void write(const RunStatus &status);
/// Deletes status.json if it is there.
void clear();
/// Adds a record at the front of history.json and a line at the end of backup.log. A skip that
/// repeats the newest entry of its destination replaces that entry in the history.
void append(const RunRecord &record);
/// Replaces state.json.
void save(const EngineState &state);

/// Absent when there is no file, or it can't be read or decoded.
std::optional<RunStatus> loadStatus();
/// Newest first; empty when the file can't be read or decoded.
QList<RunRecord> loadHistory();
/// The defaults when the file can't be read or decoded.
EngineState loadState();

/// The bytes of status.json and history.json, for a reader that polls and decodes only what has
/// changed; empty when there are none.
QByteArray statusBytes();
QByteArray historyBytes();
/// loadStatus() and loadHistory() from bytes.
std::optional<RunStatus> decodedStatus(const QByteArray &bytes);
QList<RunRecord> decodedHistory(const QByteArray &bytes);

/// Deletes temporary files of a writer that was killed. Only under the cycle's lock.
void removeAbandoned();

} // namespace StatusStore
