#include "model/SourceScanner.h"

#include "state/Paths.h"

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QList>
#include <QSet>

#include <algorithm>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>

namespace {

constexpr qint64 entriesPerReport = 20000;

/// Device and number of a folder, which it has under each of its names.
using Place = std::pair<dev_t, ino_t>;

Place identify(const struct stat &status)
{
    return {status.st_dev, status.st_ino};
}

/// A pattern for names. Those that most users have are compared without fnmatch, which would take
/// more time than reading the disk.
class NamePattern
{
public:
    explicit NamePattern(const QByteArray &pattern)
        : m_pattern(pattern)
        , m_kind(kindOf(pattern))
    {
    }

    [[nodiscard]] bool matches(QByteArrayView name) const
    {
        switch (m_kind) {
        case Kind::Name:
            return name == QByteArrayView(m_pattern);
        case Kind::Ending:
            return name.endsWith(QByteArrayView(m_pattern).sliced(1));
        case Kind::Wildcards:
            break;
        }
        return ::fnmatch(m_pattern.constData(), name.data(), 0) == 0;
    }

private:
    enum class Kind {
        Name,
        Ending, ///< an asterisk, and a name behind it
        Wildcards,
    };

    static bool isPlain(QByteArrayView text)
    {
        return std::none_of(text.begin(), text.end(), [](char sign) {
            return sign == '*' || sign == '?' || sign == '[' || sign == '\\';
        });
    }
    static Kind kindOf(QByteArrayView pattern)
    {
        if (isPlain(pattern)) {
            return Kind::Name;
        }
        return pattern.startsWith('*') && isPlain(pattern.sliced(1)) ? Kind::Ending
                                                                     : Kind::Wildcards;
    }

    QByteArray m_pattern;
    Kind m_kind;
};

class Excludes
{
public:
    explicit Excludes(const QStringList &patterns)
    {
        for (const QString &pattern : patterns) {
            const QByteArray expanded = QFile::encodeName(Paths::expandedHome(pattern));
            if (expanded.startsWith('/')) {
                addPath(expanded);
            } else {
                m_names.append(NamePattern(expanded));
            }
        }
    }

    /// The names in a folder that are excluded by their full paths.
    [[nodiscard]] QSet<QByteArray> namesIn(const QByteArray &folder) const
    {
        return m_paths.value(folder);
    }
    [[nodiscard]] bool hold(const Place &folder) const { return m_folders.contains(folder); }
    [[nodiscard]] bool holdName(QByteArrayView name) const
    {
        return std::any_of(m_names.cbegin(), m_names.cend(),
                           [name](const NamePattern &pattern) { return pattern.matches(name); });
    }

private:
    void addPath(const QByteArray &path)
    {
        const qsizetype slash = path.lastIndexOf('/');
        m_paths[path.first(slash)].insert(path.sliced(slash + 1));
        struct stat folder = {};
        // With a slash behind it, it is no path of an entry.
        if (!path.endsWith('/') && ::lstat(path.constData(), &folder) == 0 &&
            S_ISDIR(folder.st_mode)) {
            m_folders.insert(identify(folder));
        }
    }

    QHash<QByteArray, QSet<QByteArray>> m_paths; ///< names by the path of their folder
    QSet<Place> m_folders;
    QList<NamePattern> m_names;
};

struct CloseFolder
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

/// A folder on the way from the source to where the walk is.
struct Level
{
    QByteArray path; ///< without a slash behind it
    Place place;
    QList<std::pair<ino_t, QByteArray>> folders; ///< those in it that are still to be entered
};

/// A walk through a source, which reads each folder whole before it enters those in it. So no more
/// than one is open at a time, however deep it goes.
class Walk
{
public:
    Walk(const Excludes &excludes, const std::function<void(qint64)> &progress,
         const std::stop_token &stop)
        : m_excludes(excludes)
        , m_progress(progress)
        , m_stop(stop)
    {
    }

    qint64 total(const QByteArray &source)
    {
        // The source itself may be a link.
        enter(source.endsWith('/') ? source.chopped(1) : source, source, 0);
        while (!m_levels.isEmpty() && !m_stop.stop_requested()) {
            Level &level = m_levels.last();
            if (level.folders.isEmpty()) {
                m_levels.removeLast();
                continue;
            }
            const QByteArray path = level.path + '/' + level.folders.takeLast().second;
            enter(path, path, O_NOFOLLOW);
        }
        return m_total;
    }

private:
    void enter(const QByteArray &path, const QByteArray &opened, int flags)
    {
        const int descriptor =
            ::open(opened.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | flags);
        if (descriptor < 0) {
            return;
        }
        const OpenFolder folder(::fdopendir(descriptor));
        struct stat status = {};
        if (!folder) {
            ::close(descriptor);
            return;
        }
        if (::fstat(descriptor, &status) != 0 || isEntered(identify(status)) ||
            (!m_levels.isEmpty() && m_excludes.hold(identify(status)))) {
            return;
        }
        m_levels.append({.path = path, .place = identify(status), .folders = {}});
        read(folder.get(), m_levels.last());
    }

    /// Whether a folder is one of those that lead to it, as in a file system that holds itself.
    [[nodiscard]] bool isEntered(const Place &place) const
    {
        return std::any_of(m_levels.cbegin(), m_levels.cend(),
                           [&place](const Level &level) { return level.place == place; });
    }

    void read(DIR *folder, Level &level)
    {
        const QSet<QByteArray> excluded = m_excludes.namesIn(level.path);
        while (const dirent *const entry = ::readdir(folder)) {
            if (m_stop.stop_requested()) {
                return;
            }
            const QByteArrayView name(&entry->d_name[0]);
            if (name == "." || name == ".." ||
                (!excluded.isEmpty() && excluded.contains(name.toByteArray())) ||
                m_excludes.holdName(name)) {
                continue;
            }
            take(::dirfd(folder), *entry, level);
        }
        // By number, the way they lie on most disks; the last is entered first.
        std::sort(level.folders.rbegin(), level.folders.rend());
    }

    void take(int folder, const dirent &entry, Level &level)
    {
        struct stat status = {};
        bool isFolder = entry.d_type == DT_DIR;
        if ((entry.d_type == DT_REG || entry.d_type == DT_UNKNOWN) &&
            ::fstatat(folder, &entry.d_name[0], &status, AT_SYMLINK_NOFOLLOW) == 0) {
            isFolder = S_ISDIR(status.st_mode);
            m_total += S_ISREG(status.st_mode) ? status.st_size : 0;
        }
        if (isFolder) {
            level.folders.append({entry.d_ino, QByteArray(&entry.d_name[0])});
        }
        ++m_count;
        if (m_count % entriesPerReport == 0) {
            m_progress(m_total);
        }
    }

    const Excludes &m_excludes;
    const std::function<void(qint64)> &m_progress;
    const std::stop_token &m_stop;
    QList<Level> m_levels;
    qint64 m_total = 0;
    qint64 m_count = 0;
};

} // namespace

qint64 SourceScanner::size(const QString &path, const QStringList &patterns,
                           const std::function<void(qint64)> &progress, const std::stop_token &stop)
{
    const Excludes excludes(patterns);
    return Walk(excludes, progress, stop).total(QFile::encodeName(Paths::inFull(path)));
}
