#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

#include <sys/types.h>

/// Which program file runs under a process id.

/// Full path of the executable of a running process; absent when there is no such process, when the
/// number belongs to a thread, or when the system doesn't say. For a file that was replaced or
/// deleted meanwhile, its former path.
std::optional<QString> executablePath(pid_t pid);

/// Whether a word is among the arguments that a running process was started with.
bool wasStartedWith(pid_t pid, QByteArrayView word);

/// Full path of this program's own executable; absent when the system doesn't say.
std::optional<QString> ownExecutablePath();
