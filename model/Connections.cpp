#include "model/Connections.h"

#include <QRegularExpression>

#include <array>
#include <utility>

namespace {

constexpr std::array remotePlaces{DestinationID::Drive, DestinationID::Server};

/// Without the spaces and tabs at both ends.
QString withoutBlanks(const QString &text)
{
    static const QRegularExpression blanks(QStringLiteral("^[ \\t]+|[ \\t]+$"));
    return QString(text).remove(blanks);
}

Background::Lane laneOf(DestinationID destination)
{
    return destination == DestinationID::Drive ? Background::Lane::Drive : Background::Lane::Server;
}

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

Connections::~Connections()
{
    cancelDrive();
}

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
        if (connection.connecting) {
            continue; // settled when that ends
        }
        connection.connected =
            (destination == DestinationID::Drive ? accounts.drive : accounts.server) &&
            m_leaving.value(destination) == 0;
        set(destination, connection);
    }
    if (drive().connected) {
        keepNoSecret(); // of a sign-in that ended while the program did
    }
}

void Connections::refreshQuota()
{
    const bool asksDrive = drive().connected && !drive().connecting;
    const bool asksServer = server().connected && !server().connecting;
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

void Connections::connectDrive()
{
    if (drive().connecting) {
        return;
    }
    m_driveHandle = std::make_shared<ProcessHandle>();
    const AppConfig &config = m_settings.config();
    attempt(DestinationID::Drive, [tools = m_world.tools, handle = m_driveHandle,
                                   clientID = withoutBlanks(config.driveClientID),
                                   clientSecret = withoutBlanks(config.driveClientSecret)] {
        return tools->connectDrive(clientID, clientSecret, *handle);
    });
}

void Connections::cancelDrive()
{
    if (m_driveHandle) {
        m_driveHandle->terminate();
    }
}

void Connections::endSignIn(std::chrono::milliseconds patience)
{
    cancelDrive();
    m_world.background.waitFor(Background::Lane::Drive, patience);
}

void Connections::connectServer(const QString &secret)
{
    if (server().connecting) {
        return;
    }
    attempt(DestinationID::Server, [tools = m_world.tools, config = m_settings.config(), secret] {
        return tools->connectServer(config, secret);
    });
}

/// Connects a place, after what was asked of it before.
void Connections::attempt(DestinationID destination, std::function<ToolCalls::Attempt()> connecting)
{
    raise(destination); // what is being asked of an earlier account
    const quint64 number = ++m_attempts[destination];
    Connection connection = m_all.value(destination);
    connection.connecting = true;
    connection.error.clear();
    set(destination, connection);
    m_world.background.runInOrder(laneOf(destination), this, std::move(connecting),
                                  [this, destination, number](const ToolCalls::Attempt &attempt) {
                                      if (m_attempts.value(destination) ==
                                          number) { // no disconnect was asked for since
                                          end(destination, attempt);
                                      }
                                  });
}

void Connections::end(DestinationID destination, const ToolCalls::Attempt &attempt)
{
    raise(destination);
    Connection connection;
    connection.connected = attempt.isConnected;
    connection.error = attempt.error.value_or(QString());
    connection.quota = attempt.quota;
    set(destination, connection);
    if (attempt.error) {
        return;
    }
    AppConfig config = m_settings.config();
    (destination == DestinationID::Drive ? config.driveEnabled : config.serverEnabled) = true;
    m_settings.setConfig(config);
    if (destination == DestinationID::Drive) {
        keepNoSecret();
    }
    Q_EMIT connected(destination);
    refreshQuota();
}

/// The secret of a client of the user's own stands in rclone's encrypted file from now on.
void Connections::keepNoSecret()
{
    AppConfig config = m_settings.config();
    config.driveClientSecret.clear();
    m_settings.setConfig(config);
}

void Connections::disconnect(DestinationID destination)
{
    ++m_attempts[destination];
    if (destination == DestinationID::Drive) {
        cancelDrive(); // the sign-in would keep the disconnect waiting
    }
    AppConfig config = m_settings.config();
    (destination == DestinationID::Drive ? config.driveEnabled : config.serverEnabled) = false;
    m_settings.setConfig(config);
    raise(destination);
    set(destination, {});
    ++m_leaving[destination];
    m_world.background.runInOrder(
        laneOf(destination), this,
        [tools = m_world.tools, destination] {
            tools->disconnect(destination);
            return true;
        },
        [this, destination](bool) {
            --m_leaving[destination];
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
