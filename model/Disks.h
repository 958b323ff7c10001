#pragma once

#include "model/Notice.h"
#include "state/AppConfig.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

/// What the model looks at and leaves on the user's disks, its own files apart. Every call waits
/// for the disk, which may be behind a network: not for the window's thread. Any thread may call.
class Disks
{
public:
    /// The room on a disk, in bytes.
    struct Volume
    {
        qint64 free = 0; ///< that the user may fill
        qint64 total = 0;

        bool operator==(const Volume &) const = default;
    };

    /// Those of this machine.
    static std::shared_ptr<Disks> real();

    Disks() = default;
    virtual ~Disks() = default;
    Disks(const Disks &) = delete;
    Disks &operator=(const Disks &) = delete;
    Disks(Disks &&) = delete;
    Disks &operator=(Disks &&) = delete;

    /// What is seen of the folder of the local backups.
    struct LocalPlace
    {
        bool isBesideHome = false;    ///< it is there, on the disk of the home folder
        std::optional<Volume> volume; ///< its disk; absent while that isn't there

        bool operator==(const LocalPlace &) const = default;
    };

    virtual LocalPlace localPlace(const AppConfig &config) = 0;

    /// Those of some paths that are folders, in their order; a link counts as what it leads to.
    virtual QStringList folders(const QStringList &paths) = 0;

    /// Bytes of a source of these settings, without what they exclude and without the repository.
    /// `progress` gets the sum so far, on the caller's thread. Asked to stop, it ends with what it
    /// has.
    virtual qint64 size(const QString &source, const AppConfig &config,
                        const std::function<void(qint64)> &progress,
                        const std::stop_token &stop) = 0;

    /// Writes a recovery kit to a path, and says how that came out.
    virtual Notice saveKit(const QString &path, const QString &text,
                           const QString &localFolder) = 0;
    /// What to say of a recovery kit that is in a file.
    virtual Notice kitPlace(const QString &path, const QString &localFolder) = 0;

    /// Removes the previews of saved files.
    virtual void removePreviews() = 0;
};
