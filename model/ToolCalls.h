#pragma once

#include "model/RepoInfo.h"
#include "state/AppConfig.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"

#include <QString>

#include <memory>
#include <optional>

/// What the model asks of restic, rclone and the system's schedule. Every call waits for the tool
/// and for what that waits for: not for the window's thread. Any thread may call.
class ToolCalls
{
public:
    /// Which remote places have an account.
    struct Accounts
    {
        bool drive = false;
        bool server = false;
    };

    /// The tools of the installation.
    static std::shared_ptr<ToolCalls> real();

    ToolCalls() = default;
    virtual ~ToolCalls() = default;
    ToolCalls(const ToolCalls &) = delete;
    ToolCalls &operator=(const ToolCalls &) = delete;
    ToolCalls(ToolCalls &&) = delete;
    ToolCalls &operator=(ToolCalls &&) = delete;

    /// Whether a repository's place can be reached.
    virtual bool isAvailable(const Restic &restic) = 0;
    /// Reads the repository: the versions of this machine, and the size of the whole.
    virtual RepoInfo read(const Restic &restic) = 0;
    /// Whether the repository reports that the key is wrong. False when it can't be reached, or
    /// fails for a different reason.
    virtual bool refusesKey(const Restic &restic) = 0;

    virtual Accounts accounts() = 0;
    /// The room on a remote; absent when it doesn't report that.
    virtual std::optional<Rclone::Quota> quota(const QString &remote) = 0;
    /// rclone's word for the versioning of a bucket of the private server; absent when it has none.
    virtual std::optional<QString> versioning(const QString &bucket) = 0;

    /// How connecting a remote place came out.
    struct Attempt
    {
        std::optional<QString> error;       ///< what to show; absent on success
        bool isConnected = false;           ///< there is an account now
        std::optional<Rclone::Quota> quota; ///< the room there, where that was asked too
    };

    /// Has the user sign in to Google Drive in a browser, and waits for that until the handle is
    /// asked to stop. With an empty client the tool's own is used.
    virtual Attempt connectDrive(const QString &clientID, const QString &clientSecret,
                                 ProcessHandle &handle) = 0;
    /// Connects the private server of the settings, and asks how much room there is.
    virtual Attempt connectServer(const AppConfig &config, const QString &secret) = 0;
    /// Removes the account on a remote place.
    virtual void disconnect(DestinationID destination) = 0;

    /// Deletes what tools of an earlier start have left. Before any of them is started.
    virtual void removeAbandoned() = 0;
    /// Stores the host key of a server that was connected before host keys were stored.
    virtual void pinServer() = 0;

    /// Brings the system's periodic job in line with the settings.
    virtual void syncSchedule(const AppConfig &config) = 0;
};
