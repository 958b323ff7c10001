#pragma once

#include <QStringList>

/// Drops root for good and becomes an ordinary user without privileges: permissions have no effect
/// on root. The home, all in it and `folders` are given to that user. Does nothing when the process
/// doesn't run as root. False when it failed.
bool becomeOrdinaryUser(const QStringList &folders = {});
