#pragma once

#include <QString>

/// Whether the disk of the local repository is there.
///
/// A mount point may remain when its disk is removed, and is then a folder of the system's disk. So
/// the engine remembers in state.json that a repository lay on a disk of its own, and where that
/// was mounted. That no longer counts when the settings name a different folder.
namespace LocalDisk {

/// Whether the repository at this path once lay on a disk of its own, and doesn't now.
bool isAway(const QString &repository);

/// Remembers on which disk the repository lies now. Only for the engine, while that disk is there.
void remember(const QString &repository);

} // namespace LocalDisk
