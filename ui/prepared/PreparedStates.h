#pragma once

#include "ui/prepared/PreparedState.h"

#include <QStringList>

/// Prepared states by name, as of now.
namespace PreparedStates {

/// The names, in the order in which a user would go through them:
/// - "fresh": just installed;
/// - "kit": destinations, and the key not saved;
/// - "waiting": ready, and no backup yet;
/// - "launching", "scanning", "running";
/// - "well": three copies, verified;
/// - "single": a disk alone, of the same machine's;
/// - "access": without access to the whole disk;
/// - "stale": no good backup for days;
/// - "staleRunning": the same, with a backup that runs now;
/// - "failed": a failed backup, a failed verification, a repository that can't be read;
/// - "keyError": the key store doesn't answer;
/// - "long": every text as long as it can get, with markup and odd signs.
QStringList names();

/// An unknown name is "fresh".
PreparedState state(const QString &name);

} // namespace PreparedStates
