#pragma once

#include "model/Connection.h"
#include "model/EncryptionKey.h"
#include "model/Settings.h"
#include "model/World.h"

#include <QMap>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

/// The accounts on the remote places.
///
/// Each place has a generation number, which disconnecting, switching off and a new key raise. An
/// answer to a question of an earlier generation is dropped, and the question is asked again.
class Connections final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Connection drive READ drive NOTIFY driveChanged FINAL)
    Q_PROPERTY(Connection server READ server NOTIFY serverChanged FINAL)

public:
    /// `settings` and `key` outlive this.
    Connections(World world, Settings &settings, EncryptionKey &key, QObject *parent = nullptr);
    /// Ends a sign-in that is under way.
    ~Connections() override;
    Q_DISABLE_COPY_MOVE(Connections)

    [[nodiscard]] Connection drive() const { return m_all.value(DestinationID::Drive); }
    [[nodiscard]] Connection server() const { return m_all.value(DestinationID::Server); }

    /// Asks which places have an account, and those how much room there is.
    void read();
    /// Asks the places that are connected how much room there is.
    void refreshQuota();
    /// Has the user sign in to Google Drive, unless that is under way.
    void connectDrive();
    /// Ends the sign-in that is under way, which then counts as failed.
    void cancelDrive();
    /// The same, and waits for its end, though at most so long. For the program's end.
    void endSignIn(std::chrono::milliseconds patience);
    /// Connects the private server of the settings, unless that is under way.
    void connectServer(const QString &secret);
    /// Gives up the account on a place, the local one excepted, which goes out of use.
    void disconnect(DestinationID destination);

Q_SIGNALS:
    void driveChanged();
    void serverChanged();
    /// An account was set up, and the place is in use.
    void connected(DestinationIDs::DestinationID destination);

private:
    using Generations = QMap<DestinationID, quint64>;

    void take(const ToolCalls::Accounts &accounts);
    void attempt(DestinationID destination, std::function<ToolCalls::Attempt()> connecting);
    void end(DestinationID destination, const ToolCalls::Attempt &attempt);
    void keepNoSecret();
    void raise(DestinationID destination) { ++m_generations[destination]; }
    void set(DestinationID destination, const Connection &connection);

    const World m_world;
    Settings &m_settings;
    QMap<DestinationID, Connection> m_all;
    Generations m_generations;
    QMap<DestinationID, quint64> m_attempts;      ///< raised by connecting and disconnecting
    QMap<DestinationID, int> m_leaving;           ///< how many disconnects are under way
    std::shared_ptr<ProcessHandle> m_driveHandle; ///< of the last sign-in
};
