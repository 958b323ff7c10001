#pragma once

#include <QString>

/// The folder where the desktop mounts removable disks, or the nearest one to it that is there:
/// from here a panel begins in which the user chooses a disk.
QString volumesFolder();

/// The same for a user, with the system's folders below `root` in place of "/".
QString volumesFolder(const QString &user, const QString &root);
