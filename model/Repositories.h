#pragma once

#include "model/DestinationState.h"
#include "model/EncryptionKey.h"
#include "model/RepoInfo.h"
#include "model/RunWatch.h"
#include "model/Settings.h"
#include "model/World.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>

/// The repositories of the destinations, as they were read last.
class Repositories final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(
        QList<DestinationState> destinations READ destinations NOTIFY destinationsChanged FINAL)

public:
    /// All but the world outlive this.
    Repositories(World world, Settings &settings, EncryptionKey &key, RunWatch &run,
                 QObject *parent = nullptr);

    /// What is known of the destinations in use. Without an entry, nothing is known.
    [[nodiscard]] const QMap<DestinationID, RepoInfo> &all() const { return m_all; }
    [[nodiscard]] RepoInfo of(DestinationID destination) const { return m_all.value(destination); }
    [[nodiscard]] QString stateText(DestinationID destination) const;
    [[nodiscard]] Tone stateTone(DestinationID destination) const;
    /// All that a row about a destination shows, for all three in their order.
    [[nodiscard]] QList<DestinationState> destinations() const;

    /// Reads all repositories, and lets them be read from now on. To be called when the key is
    /// known, or known to be out of reach.
    void begin();
    /// Reads a destination's repository again. The former values stay until then.
    void refresh(DestinationID destination);
    void refreshAll();

Q_SIGNALS:
    void changed();
    /// What a row about a destination shows may have changed.
    void destinationsChanged();

private:
    void raise(const AppConfig &before);
    void read(const Restic &restic, bool isThere, int use);
    void store(DestinationID destination, const RepoInfo &info);

    const World m_world;
    Settings &m_settings;
    EncryptionKey &m_key;
    RunWatch &m_run;
    bool m_hasBegun = false;
    QMap<DestinationID, RepoInfo> m_all;
    QMap<DestinationID, int> m_uses; ///< how often each destination went out of use
    QSet<QString> m_sought;          ///< repositories whose availability is being checked
    QSet<QString> m_soughtAgain;     ///< those of them to be read again after that
};
