#pragma once

#include <QString>

/// Whether this program may read all files in the user's home folder. Nothing is cached, and the
/// folder isn't walked through.
bool hasFullDiskAccess(const QString &home);

/// The same with the path of the file in which a Flatpak sandbox lists its permissions. Where there
/// is no such file, there is no sandbox.
bool hasFullDiskAccess(const QString &home, const QString &sandboxFile);
