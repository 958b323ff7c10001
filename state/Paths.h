#pragma once

#include <QString>

#include <optional>

/// Paths and names of this machine. The values are found at first use and kept for the lifetime of
/// the process; any thread may ask.
namespace Paths {

/// Home folder of the current user.
const QString &home();

/// Name of this machine, without any ".local".
const QString &hostname();

/// Folder of all our files. It is made at first use, with mode 700. A failure to make it isn't
/// reported here, but shows at the first file that can't be written.
const QString &support();

/// Full path of a file of the support folder.
QString supportFile(const QString &name);

/// The program's own folder beside its executable, absent when there is none. Tools are searched
/// here first.
std::optional<QString> resources();

/// The full path for one that the user has written, perhaps with a leading ~ for the home folder.
QString expandedHome(const QString &path);

/// A folder of the settings as a full path: a relative one begins at the home folder. Empty stays
/// empty.
QString inFull(const QString &path);

/// A path as the user reads it: a leading home folder as "~". A different folder whose name merely
/// begins like that of the home folder isn't changed.
QString abbreviatedHome(const QString &path);

/// Mount point of the volume that holds a path, or would hold it if it existed: that of its nearest
/// existing ancestor. Absent when the system doesn't report it.
std::optional<QString> volume(const QString &path);

/// The host name without every occurrence of ".local".
QString withoutLocalDomain(QString hostname);

} // namespace Paths
