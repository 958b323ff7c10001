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

/// The states of the page of the sources:
/// - "noSources": no folder and no exclusion;
/// - "unmeasured", "measuring", "partlyMeasured", "measured";
/// - "wrongExclude": an exclusion in the settings and a typed one, both wrong;
/// - "refusedDrop": something that is no folder was dropped;
/// - "many": many folders with long names, and many exclusions.
QStringList sourcesNames();

/// The states of the page of the destinations. Of the local disk, with nothing else connected:
/// - "noDisk": no folder chosen;
/// - "disk", "systemDisk", "diskAway", "diskUnknown" (not looked at yet);
/// - "diskMeasuring": the sources are being measured.
/// What is said of whether the disk will hold:
/// - "fits", "tooSmall": before the first backup;
/// - "growthUnknown", "growthNegligible", "growthAlone" (the room isn't known), "growthDays",
///   "growthMonths", "growthYears".
/// Google Drive: "driveConnecting", "driveError", "driveConnected" (with its room), "driveVersions"
/// (with versions), "driveNoQuota".
/// The private server, for each of "sftp", "webdav", "s3", "smb": the name alone (not connected),
/// and the name with "Connecting", "Error", "Connected" behind it; "s3Unversioned" and
/// "s3Versioned" are connected. And "allConnected".
QStringList destinationsNames();

/// The state of this name; "fresh" for an unknown one.
PreparedState state(const QString &name);

} // namespace PreparedStates
