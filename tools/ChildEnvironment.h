#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

/// The environment of every child of ours: what this process was started with, without what would
/// change the meaning of our calls, and with our own variables laid over.
///
/// restic and rclone take each of their options from a variable as well, and one that the user has
/// set for own work with them beats what they would find otherwise: another key, another
/// repository, a run that only pretends. So every variable of theirs is left out, but for the few
/// that only say how this machine reaches the world. docs/environment.md has both lists.
namespace ChildEnvironment {

/// Takes a copy that all children get from now on. To be called while there is one thread only:
/// libraries change the environment at any time, and reading it meanwhile isn't safe. Until it is
/// called every child gets the environment as it is then.
void keep();

/// The entries, NAME=value, for one child, with `changes` laid over.
QList<QByteArray> with(const QMap<QString, QString> &changes);

} // namespace ChildEnvironment
