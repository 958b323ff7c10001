#include "model/Connections.h"

#include <array>
#include <utility>

namespace {

constexpr std::array remotePlaces{DestinationID::Drive, DestinationID::Server};

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
RemoteRoom readRoom(ToolCalls &tools, bool asksDrive, bool asksServer, const AppConfig &config)
{
    RemoteRoom room;
    if (asksDrive) {
        room.drive = tools.quota(Rclone::driveRemote);
    }
    if (asksServer) {
        room.server = tools.quota(Rclone::serverRemote);
        if (config.serverKind == ServerKind::S3) {
            room.versioning = tools.versioning(bucket(config.serverPath));
        }
    }
    return room;
}

} // namespace

Connections::Connections(World world, Settings &settings, EncryptionKey &key, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
{
    connect(&m_settings, &Settings::changed, this, [this](const AppConfig &before) {
        for (const DestinationID destination : remotePlaces) {
            if (before.isEnabled(destination) && !m_settings.config().isEnabled(destination)) {
                raise(destination);
            }
        }
    });
    connect(&key, &EncryptionKey::changed, this, [this] {
        for (const DestinationID destination : remotePlaces) {
            raise(destination);
        }
    });
}

void Connections::read()
{
    m_world.background.run(
        this, [tools = m_world.tools] { return tools->accounts(); },
        [this, asked = m_generations](const ToolCalls::Accounts &accounts) {
            if (asked == m_generations) {
                take(accounts);
                refreshQuota();
            } else {
                read();
            }
        });
}

void Connections::take(const ToolCalls::Accounts &accounts)
{
    for (const DestinationID destination : remotePlaces) {
        Connection connection = m_all.value(destination);
        connection.connected =
            (destination == DestinationID::Drive ? accounts.drive : accounts.server) &&
            !m_leaving.contains(destination);
        set(destination, connection);
    }
}

void Connections::refreshQuota()
{
    const bool asksDrive = drive().connected;
    const bool asksServer = server().connected;
    if (!asksDrive && !asksServer) {
        return;
    }
    m_world.background.run(
        this,
        [tools = m_world.tools, asksDrive, asksServer, config = m_settings.config()] {
            return readRoom(*tools, asksDrive, asksServer, config);
        },
        [this, asksDrive, asksServer, asked = m_generations](const RemoteRoom &room) {
            if (asked != m_generations) {
                refreshQuota();
                return;
            }
            if (asksDrive) {
                Connection found = drive();
                found.quota = room.drive;
                set(DestinationID::Drive, found);
            }
            Connection found = server();
            found.versioning = room.versioning.value_or(QString());
            if (asksServer) {
                found.quota = room.server;
            }
            set(DestinationID::Server, found);
        });
}

void Connections::disconnect(DestinationID destination)
{
    raise(destination);
    set(destination, {});
    m_leaving.insert(destination);
    m_world.background.run(
        this,
        [tools = m_world.tools, destination] {
            tools->disconnect(destination);
            return true;
        },
        [this, destination](bool) {
            m_leaving.remove(destination);
            raise(destination);
            read();
        });
}

void Connections::set(DestinationID destination, const Connection &connection)
{
    if (m_all.value(destination) == connection) {
        return;
    }
    m_all.insert(destination, connection);
    if (destination == DestinationID::Drive) {
        Q_EMIT driveChanged();
    } else {
        Q_EMIT serverChanged();
    }
}
