#include "model/SourceScanner.h"

#include "state/Paths.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QSet>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include <fnmatch.h>
#include <fts.h>
#include <sys/stat.h>

namespace {

constexpr qint64 entriesPerReport = 20000;

struct Excludes
{
    /// Device and number of a folder, which it has under each of its names.
    using Place = std::pair<dev_t, ino_t>;

    QSet<QByteArray> paths;
    QSet<Place> folders;
    QList<QByteArray> names;

    explicit Excludes(const QStringList &patterns)
    {
        for (const QString &pattern : patterns) {
            const QByteArray expanded = QFile::encodeName(Paths::expandedHome(pattern));
            if (expanded.startsWith('/')) {
                paths.insert(expanded);
                struct stat folder = {};
                // With a slash behind it, it is no path of an entry.
                if (!expanded.endsWith('/') && ::lstat(expanded.constData(), &folder) == 0 &&
                    S_ISDIR(folder.st_mode)) {
                    folders.insert({folder.st_dev, folder.st_ino});
                }
            } else {
                names.append(expanded);
            }
        }
    }

    [[nodiscard]] bool hold(const FTSENT &entry) const
    {
        return paths.contains(QByteArray(entry.fts_path)) ||
               (entry.fts_info == FTS_D &&
                folders.contains({entry.fts_statp->st_dev, entry.fts_statp->st_ino})) ||
               std::any_of(names.cbegin(), names.cend(), [&entry](const QByteArray &name) {
                   return ::fnmatch(name.constData(), &entry.fts_name[0], 0) == 0;
               });
    }
};

struct CloseWalk
{
    void operator()(FTS *walk) const { ::fts_close(walk); }
};

} // namespace

qint64 SourceScanner::size(const QString &path, const QStringList &patterns,
                           const std::function<void(qint64)> &progress, const std::stop_token &stop)
{
    const Excludes excludes(patterns);
    QByteArray root = QFile::encodeName(Paths::inFull(path));
    std::array<char *, 2> roots = {root.data(), nullptr};
    // By full paths: the folder of the whole process must stay where it is.
    const std::unique_ptr<FTS, CloseWalk> walk(
        ::fts_open(roots.data(), FTS_PHYSICAL | FTS_COMFOLLOW | FTS_NOCHDIR, nullptr));
    if (!walk) {
        return 0;
    }
    qint64 total = 0;
    qint64 count = 0;
    while (FTSENT *const entry = ::fts_read(walk.get())) {
        if (stop.stop_requested()) {
            break;
        }
        // The folder itself isn't one of its entries, and each folder comes by again on the way up.
        if (entry->fts_level == FTS_ROOTLEVEL || entry->fts_info == FTS_DP) {
            continue;
        }
        // A folder that can't be read comes by a second time to say so.
        if (entry->fts_info == FTS_DNR) {
            continue;
        }
        if (excludes.hold(*entry)) {
            ::fts_set(walk.get(), entry, FTS_SKIP);
            continue;
        }
        if (entry->fts_info == FTS_F) {
            total += entry->fts_statp->st_size;
        }
        ++count;
        if (count % entriesPerReport == 0) {
            progress(total);
        }
    }
    return total;
}
