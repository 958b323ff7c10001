#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

/// The environment of every child process: the one that this process was started with, without what
/// would change the meaning of our calls, and with our own variables added or replaced.
///
/// restic and rclone read each of their options from a variable too. One that the user has set for
/// their own work would win: a different key, a different repository, a dry run. So all their
/// variables are left out, except the few that only say how this machine reaches the network.
/// docs/environment.md has both lists.
namespace ChildEnvironment {

/// Takes a copy, which all children get from now on. Call it while there is only one thread:
/// libraries may change the environment at any time, and reading it meanwhile isn't safe. Before
/// the call a child gets the environment as it is when the child starts.
void keep();

/// The entries, NAME=value, for one child; `changes` are added or replace what is there.
QList<QByteArray> with(const QMap<QString, QString> &changes);

} // namespace ChildEnvironment
