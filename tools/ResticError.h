#pragma once

#include "tools/ProcessRunner.h"

#include <QString>

/// The exit codes of restic that have a meaning here (10 and 11 since 0.17.0, 12 since 0.17.1).
namespace ResticExit {
inline constexpr int someFilesUnreadable = 3; ///< of backup; the snapshot was made
inline constexpr int noRepository = 10;
inline constexpr int repositoryLocked = 11;
inline constexpr int wrongPassword = 12;
} // namespace ResticExit

/// A failure of restic, in the user's words.
struct ResticError
{
    QString message;

    bool operator==(const ResticError &) const = default;

    /// The failure of a run that didn't end well.
    static ResticError of(const ProcessResult &result);
};
