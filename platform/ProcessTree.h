#pragma once

#include <QList>

#include <sys/types.h>

/// The running processes that a process has started, those that they have started, and so on. What
/// was started by a process that has ended isn't found. Empty when the system doesn't say.
QList<pid_t> descendants(pid_t ancestor);

/// Kills a process and its descendants, including those that are being started at that moment.
void killTree(pid_t ancestor);
