#pragma once

#include <QList>

#include <sys/types.h>

/// The processes that a process has started, those that they have started, and so on, as they run
/// now; what was started by one that has ended isn't found. Empty when the system doesn't say.
QList<pid_t> descendants(pid_t ancestor);

/// Kills a process and its descendants, those too that they are starting just then.
void killTree(pid_t ancestor);
