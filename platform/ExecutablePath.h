#pragma once

#include <QString>

#include <optional>

#include <sys/types.h>

/// Which program file runs under a process id.

/// Full path of the executable of a living process; absent when there is no such process or the
/// system doesn't tell. A file that was replaced or deleted meanwhile is named by its former path.
std::optional<QString> executablePath(pid_t pid);

/// Full path of this program's own executable; absent when the system doesn't tell.
std::optional<QString> ownExecutablePath();
