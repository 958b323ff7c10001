#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Mount point of the file system that holds an existing path; absent when it can't be told.
std::optional<QString> mountPoint(const QString &path);

/// Further paths under which an existing folder can be seen, because its place is mounted more than
/// once. `path` has no link in it.
QStringList otherMountsOf(const QString &path);
