#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The files of a repository, reached without restic: in a folder, or on a remote of rclone. For a
/// repository that restic can't open.
namespace RepositoryFiles {

/// Those that hold keys, versions or data, by their paths inside the repository, which is given as
/// restic names it; absent when they can't all be listed.
std::optional<QStringList> list(const QString &repository);

/// Whether a file holds a key, by its path.
bool isKey(const QString &file);

/// Deletes a file; a failure is ignored.
void remove(const QString &repository, const QString &file);

} // namespace RepositoryFiles
