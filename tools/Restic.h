#pragma once

#include "state/AppConfig.h"
#include "tools/ProcessRunner.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

#include <tl/expected.hpp>

/// One snapshot of a repository.
struct Snap
{
    QString id; ///< full; the identity
    QString shortID;
    QDateTime date;
    QStringList paths; ///< folders that it holds
    QString host;      ///< machine that it came from

    bool operator==(const Snap &) const = default;
};

/// A file or folder inside a snapshot.
struct Node
{
    QString path; ///< full, inside the snapshot
    QString name;
    bool isDir = false;
    qint64 size = 0;                   ///< bytes; 0 when restic gives none
    std::optional<QDateTime> modified; ///< absent when restic gives none

    bool operator==(const Node &) const = default;
};

/// restic's own exit codes that mean something to us (10 and 11 since 0.17.0, 12 since 0.17.1).
namespace ResticExit {
inline constexpr int someFilesUnreadable = 3; ///< of backup: there is a snapshot all the same
inline constexpr int noRepository = 10;
inline constexpr int repositoryLocked = 11;
inline constexpr int wrongPassword = 12;
} // namespace ResticExit

/// A failure of restic, in the words that the person reads.
struct ResticError
{
    QString message;

    bool operator==(const ResticError &) const = default;
};

/// Drives restic for one destination: a plain value without state, so any thread may use a copy.
///
/// Every call blocks until restic has ended. The key goes to restic's standard input; for a
/// destination behind rclone, the key of rclone's configuration goes through a OneShotSecret. Two
/// calls on one repository at once are ordered by restic's own lock.
struct Restic
{
    DestinationID dest = DestinationID::Local;
    AppConfig config;
    QString password;                          ///< the repository's key
    std::optional<QString> repositoryOverride; ///< a repository that isn't this machine's own
    std::chrono::seconds lockPatience{120};    ///< how long prepare() waits for a lock in use

    /// Whether the destination can be reached, told without running restic or asking a network.
    [[nodiscard]] bool isAvailable() const;
    /// What the person reads when it can't.
    [[nodiscard]] QString unavailableMessage() const;

    /// Runs restic with arguments. Without restic the status is -1 and standard error says so.
    [[nodiscard]] ProcessResult run(const QStringList &arguments, ProcessHandle *handle = nullptr,
                                    const LineReceiver &onLine = {}) const;

    /// Sees to it that the repository exists and no stale lock is on it. One whose making was cut
    /// short is made good; one that has data and has lost what opens it isn't touched.
    [[nodiscard]] tl::expected<void, ResticError> prepare() const;

    /// Makes the repository, which has nothing that could be opened.
    [[nodiscard]] tl::expected<void, ResticError> make() const;

    /// All snapshots, newest first; none for a repository that doesn't exist yet.
    [[nodiscard]] tl::expected<QList<Snap>, ResticError> snapshots() const;

    /// Bytes that the repository's data take; absent on any failure.
    [[nodiscard]] std::optional<qint64> repositorySize() const;

    /// What a folder of a snapshot holds: folders first, each group in the natural order of names.
    [[nodiscard]] tl::expected<QList<Node>, ResticError> list(const QString &snapshot,
                                                              const QString &path) const;

    /// Everything in a snapshot with a name that holds the term, whatever the case, in the natural
    /// order of names. The term is meant as it stands: none of its characters is a wildcard.
    [[nodiscard]] tl::expected<QList<Node>, ResticError> find(const QString &snapshot,
                                                              const QString &term) const;

    /// Arguments that bring one node back: into the folder `target`, or where it was when that is
    /// absent. It lands there itself, without the folders above it.
    [[nodiscard]] QStringList restoreArguments(const QString &snapshot, const Node &node,
                                               const std::optional<QString> &target) const;

    /// Clears locks that killed runs left; one in use is left alone by restic.
    void unlock() const;

    /// The person's words for a run that didn't do what it should.
    [[nodiscard]] static ResticError describe(const ProcessResult &result);
};

/// A date as restic prints it, with up to nine digits of a second's fraction; absent for other
/// text.
std::optional<QDateTime> parseResticDate(QString text);

/// A pattern of restic's that matches only this text: a backslash before each \ * ? and [, and
/// brackets around a replacement character, which stands for a byte that isn't UTF-8.
QString escapedPattern(QString text);
