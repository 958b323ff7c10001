#pragma once

#include "ui/prepared/PreparedState.h"

#include <QStringList>

/// Prepared states by name. Their dates are relative to the present.
namespace PreparedStates {

/// The names, in the order in which a user would go through them:
/// - "fresh": just installed;
/// - "kit": destinations, and the key not saved;
/// - "waiting": ready, and no backup yet;
/// - "launching", "scanning", "running";
/// - "well": three copies, verified;
/// - "single": one copy alone, on the machine's own disk;
/// - "access": without access to the whole disk;
/// - "stale": no good backup for days;
/// - "staleRunning": the same, with a backup that runs now;
/// - "failed": a failed backup, a failed verification, a repository that can't be read;
/// - "keyError": the keyring gives an error instead of the key;
/// - "starting": the keyring hasn't answered yet;
/// - "support": the support folder can't be written;
/// - "long": every text as long as possible, with markup and special characters.
QStringList names();

/// The state of this name; "fresh" for an unknown one.
PreparedState state(const QString &name);

} // namespace PreparedStates
