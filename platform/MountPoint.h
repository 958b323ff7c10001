#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Mount point of the file system that holds an existing path; absent when it isn't known.
std::optional<QString> mountPoint(const QString &path);

/// Further paths of an existing folder, where its place is mounted more than once. `path` must have
/// no link in it.
QStringList otherMountsOf(const QString &path);
