#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <stop_token>

/// Adds up the sizes of the regular files of a folder: an estimate of what a backup of it takes,
/// made without restic and so with a simple reading of its patterns.
namespace SourceScanner {

/// Bytes of all regular files below the folder at `path`, or below the one that a link there leads
/// to; hidden ones too, links further down not followed. What can't be read counts as nothing.
///
/// An exclude with a slash in front, or a ~ for the home, is one exact path, and a folder is known
/// by it under each of its names; every other one is matched against the names of files and folders
/// alone. What is excluded isn't entered.
/// `progress` gets the sum so far each 20,000 entries, on the caller's thread. Asked to stop, it
/// ends with what it has.
qint64 size(const QString &path, const QStringList &excludes,
            const std::function<void(qint64)> &progress, const std::stop_token &stop = {});

} // namespace SourceScanner
