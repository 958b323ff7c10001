#include "model/AppModel.h"

#include "model/Background.h"

namespace {

/// What the remote places say of themselves.
struct RemoteRoom
{
    std::optional<Rclone::Quota> drive;
    std::optional<Rclone::Quota> server;
    std::optional<QString> versioning;
};

/// The bucket of an S3 server, which is the first folder of its path; empty when there is none.
QString bucket(const QString &path)
{
    return path.split(u'/', Qt::SkipEmptyParts).value(0);
}

/// Waits for the servers. Only those that are connected are asked.
RemoteRoom readRoom(bool isDriveConnected, bool isServerConnected, const AppConfig &config)
{
    RemoteRoom room;
    if (isDriveConnected) {
        room.drive = Rclone::quota(Rclone::driveRemote);
    }
    if (isServerConnected) {
        room.server = Rclone::quota(Rclone::serverRemote);
        if (config.serverKind == ServerKind::S3) {
            room.versioning = Rclone::versioning(bucket(config.serverPath));
        }
    }
    return room;
}

/// Which remote places have an account.
struct Connections
{
    bool drive = false;
    bool server = false;
};

} // namespace

void AppModel::readConnections()
{
    Background().run(
        this,
        [] {
            return Connections{.drive = Rclone::isConfigured(),
                               .server = Rclone::remotes().contains(Rclone::serverRemote)};
        },
        [this](const Connections &connections) {
            assign(m_driveConnected, connections.drive, &AppModel::driveConnectedChanged);
            assign(m_serverConnected, connections.server, &AppModel::serverConnectedChanged);
            refreshQuota();
        });
}

void AppModel::refreshQuota()
{
    const bool asksDrive = m_driveConnected;
    const bool asksServer = m_serverConnected;
    if (!asksDrive && !asksServer) {
        return;
    }
    Background().run(
        this,
        [asksDrive, asksServer, config = m_config] {
            return readRoom(asksDrive, asksServer, config);
        },
        [this, asksDrive, asksServer](const RemoteRoom &room) {
            assign(m_serverVersioning, room.versioning, &AppModel::serverVersioningChanged);
            if (asksDrive) {
                assign(m_driveQuota, room.drive, &AppModel::driveQuotaChanged);
            }
            if (asksServer) {
                assign(m_serverQuota, room.server, &AppModel::serverQuotaChanged);
            }
        });
}
