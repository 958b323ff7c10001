#pragma once

#include <QStringList>

/// Makes this process one of an ordinary user without any privilege, for good: root may read and
/// write everything, so what depends on permissions shows to nobody else. The home and all in it
/// go to that user too, and so do `folders`. Does nothing when the process isn't root's. False when
/// it failed.
bool becomeOrdinaryUser(const QStringList &folders = {});
