#pragma once

#include <QString>

#include <optional>

/// Where things are on this machine. The values are found at first use and kept for the life of the
/// process; any thread may ask.
namespace Paths {

/// Home folder of the current user.
const QString &home();

/// Name of this machine, without any ".local".
const QString &hostname();

/// Folder of all our files. It is made at first use, with mode 700; a failure to make it is not
/// told here, but shows at the first file that can't be written.
const QString &support();

/// Full path of a file of the support folder.
QString supportFile(const QString &name);

/// Folder private to the program beside its executable, absent when there is none. Tools of ours
/// are searched here first.
std::optional<QString> resources();

/// A path as a person may write it, with a leading ~ for the home folder, in full.
QString expandedHome(const QString &path);

/// A folder of the settings as a full path: what isn't absolute begins at the home. Empty stays
/// empty.
QString inFull(const QString &path);

/// A path as the person reads it: the home folder in front as "~". Another folder whose name merely
/// begins like the home's stays as it is.
QString abbreviatedHome(const QString &path);

/// Mount point of the volume that holds a path, or that would hold it if it existed: its nearest
/// existing ancestor decides. Absent when the system doesn't tell.
std::optional<QString> volume(const QString &path);

/// The host name without every occurrence of ".local".
QString withoutLocalDomain(QString hostname);

} // namespace Paths
