#pragma once

#include "state/AppConfig.h"

#include <QString>

/// The list of exclusions that restic reads: excludes.txt in the support folder.
namespace ExcludeFile {

/// Full path of the file.
QString path();

/// What the file holds for these settings: their patterns with a leading ~ put in full, those
/// inside a source that is a link also as the place that it leads to, and the repository on the
/// disk if there is one by every path that a run could come to it, so that none backs it up. One a
/// line, none at the end.
QString content(const AppConfig &config);

/// Replaces the file; a failure is dropped.
void write(const AppConfig &config);

} // namespace ExcludeFile
