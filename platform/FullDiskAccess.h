#pragma once

#include <QString>

/// Whether this program may read all of the files in the person's home. Looked up anew each time,
/// without a walk through them.
bool hasFullDiskAccess(const QString &home);

/// The same with the file in which a Flatpak sandbox tells what it lets through; where there is no
/// such file, there is no sandbox.
bool hasFullDiskAccess(const QString &home, const QString &sandboxFile);
