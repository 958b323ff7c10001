#pragma once

#include <QByteArray>
#include <QString>

/// Files that are replaced whole: a reader sees the old content or the new, never a part.
namespace AtomicFile {

/// Whether new content must survive a crash of the machine.
enum class Lasting {
    throughCrashes, ///< the old or the new content is there afterwards; waits for the disk
    whileRunning,   ///< it may be lost; for content that means nothing after a crash
};

/// Writes a temporary file beside the path and renames it over it. False when that failed; the old
/// content is then still there.
bool write(const QString &path, const QByteArray &content,
           Lasting lasting = Lasting::throughCrashes);

/// Deletes the temporary files that a killed process left beside the path. To be called only when
/// nobody else can be writing it.
void removeAbandoned(const QString &path);

} // namespace AtomicFile
