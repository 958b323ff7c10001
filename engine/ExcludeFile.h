#pragma once

#include "state/AppConfig.h"

#include <QString>

/// The list of exclusions that restic reads: excludes.txt in the support folder.
namespace ExcludeFile {

/// Full path of the file.
QString path();

/// What the file holds for these settings, one pattern a line, without a line feed at the end:
/// - their patterns, with a leading ~ replaced by the home folder; those inside a source that is a
///   link also as paths inside the link's target;
/// - the repository on the disk, if there is one, by every path through which a backup could reach
///   it, so that it is never saved into itself.
QString content(const AppConfig &config);

/// Replaces the file; a failure is ignored.
void write(const AppConfig &config);

} // namespace ExcludeFile
