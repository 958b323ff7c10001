#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

#include <sys/types.h>

/// Which program file runs under a process id.

/// Full path of the executable of a living process; absent when there is no such process, the
/// number is that of a thread, or the system doesn't say. A file that was replaced or deleted
/// meanwhile is named by its former path.
std::optional<QString> executablePath(pid_t pid);

/// Whether a word is among the arguments that a living process was started with.
bool wasStartedWith(pid_t pid, QByteArrayView word);

/// Full path of this program's own executable; absent when the system doesn't tell.
std::optional<QString> ownExecutablePath();
