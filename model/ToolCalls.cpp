#include "model/ToolCalls.h"

#include "engine/Scheduler.h"
#include "state/Paths.h"

namespace {

class InstalledTools final : public ToolCalls
{
public:
    bool isAvailable(const Restic &restic) override { return restic.isAvailable(); }

    RepoInfo read(const Restic &restic) override
    {
        RepoInfo info;
        auto snapshots = restic.snapshots();
        if (!snapshots) {
            info.error = snapshots.error().message;
            return info;
        }
        // The size is that of the whole repository, other machines' versions included.
        info.size = snapshots->isEmpty() ? std::nullopt : restic.repositorySize();
        snapshots->removeIf([](const Snap &snap) { return snap.host != Paths::hostname(); });
        info.snapshots = *snapshots;
        return info;
    }

    bool refusesKey(const Restic &restic) override
    {
        return restic.isAvailable() && restic.refusesKey();
    }

    Accounts accounts() override
    {
        return {.drive = Rclone::isConfigured(),
                .server = Rclone::remotes().contains(Rclone::serverRemote)};
    }

    std::optional<Rclone::Quota> quota(const QString &remote) override
    {
        return Rclone::quota(remote);
    }

    std::optional<QString> versioning(const QString &bucket) override
    {
        return Rclone::versioning(bucket);
    }

    Attempt connectDrive(const QString &clientID, const QString &clientSecret,
                         ProcessHandle &handle) override
    {
        Attempt attempt;
        attempt.error = Rclone::connect(clientID, clientSecret, handle);
        attempt.isConnected = Rclone::isConfigured();
        return attempt;
    }

    Attempt connectServer(const AppConfig &config, const QString &secret) override
    {
        Attempt attempt;
        attempt.error = Rclone::connectServer(config, secret);
        attempt.isConnected = Rclone::remotes().contains(Rclone::serverRemote);
        if (!attempt.error) {
            attempt.quota = Rclone::quota(Rclone::serverRemote);
        }
        return attempt;
    }

    void disconnect(DestinationID destination) override
    {
        if (destination == DestinationID::Drive) {
            Rclone::disconnect();
        } else if (destination == DestinationID::Server) {
            Rclone::disconnectServer();
        }
    }

    void removeAbandoned() override
    {
        OneShotSecret::removeStale();
        Rclone::removeAbandonedHostKeys();
    }

    void pinServer() override { Rclone::pinServerIfNeeded(); }
    void syncSchedule(const AppConfig &config) override { Scheduler::sync(config); }
};

} // namespace

std::shared_ptr<ToolCalls> ToolCalls::real()
{
    return std::make_shared<InstalledTools>();
}
