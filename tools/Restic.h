#pragma once

#include "state/AppConfig.h"
#include "tools/Node.h"
#include "tools/ProcessRunner.h"
#include "tools/ResticError.h"
#include "tools/Snap.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

#include <tl/expected.hpp>

/// Runs restic for one destination: a plain value without state, so any thread may use a copy.
///
/// Every call blocks until restic has ended. The key goes to restic's standard input; for a
/// destination that rclone reaches, the key of rclone's configuration goes through a OneShotSecret.
/// restic's own lock keeps apart two calls on one repository. Backup, forget and check have types
/// of their own: ResticBackup, ResticForget, ResticCheck.
struct Restic
{
    DestinationID dest = DestinationID::Local;
    AppConfig config;
    QString password;                          ///< the repository's key
    std::optional<QString> repositoryOverride; ///< in place of the one that the settings name
    std::chrono::seconds lockPatience{120};    ///< how long prepare() waits for a lock in use

    /// Whether the destination is connected. Doesn't run restic and doesn't use the network.
    [[nodiscard]] bool isAvailable() const;
    /// What the user reads when it isn't.
    [[nodiscard]] QString unavailableMessage() const;

    /// Runs restic with arguments. Without restic the status is -1 and standard error says so.
    [[nodiscard]] ProcessResult run(const QStringList &arguments, ProcessHandle *handle = nullptr,
                                    const LineReceiver &onLine = {}) const;

    /// Makes sure that the repository exists and has no stale lock. A repository whose making was
    /// interrupted is completed; one that has data but not the file that opens it is not touched.
    [[nodiscard]] tl::expected<void, ResticError> prepare() const;

    /// Whether restic says that the key doesn't open the repository. False when that can't be
    /// tried, also where there is no repository.
    [[nodiscard]] bool refusesKey() const;

    /// Makes a repository where none can be opened.
    [[nodiscard]] tl::expected<void, ResticError> make() const;

    /// All snapshots, newest first; none for a repository that doesn't exist yet.
    [[nodiscard]] tl::expected<QList<Snap>, ResticError> snapshots() const;

    /// Size of the repository's data in bytes; absent on any failure.
    [[nodiscard]] std::optional<qint64> repositorySize() const;

    /// The content of a folder of a snapshot: folders first, each group in the natural order of
    /// names.
    [[nodiscard]] tl::expected<QList<Node>, ResticError> list(const QString &snapshot,
                                                              const QString &path) const;

    /// Everything in a snapshot whose name contains the term, in upper or lower case, in the
    /// natural order of names. No character of the term is a wildcard.
    [[nodiscard]] tl::expected<QList<Node>, ResticError> find(const QString &snapshot,
                                                              const QString &term) const;

    /// Arguments that restore one node into the folder `target`, or to where it was when that is
    /// absent. The node itself appears there, without the folders above it.
    [[nodiscard]] QStringList restoreArguments(const QString &snapshot, const Node &node,
                                               const std::optional<QString> &target) const;

    /// Removes locks that killed runs left; restic leaves a lock in use alone.
    void unlock() const;

    /// The failure of a run that didn't end well.
    [[nodiscard]] static ResticError describe(const ProcessResult &result);
};
