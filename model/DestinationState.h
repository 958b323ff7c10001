#pragma once

#include "model/Tone.h"
#include "state/DestinationID.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

/// All that a row about a destination shows.
struct DestinationState
{
    Q_GADGET
    Q_PROPERTY(DestinationIDs::DestinationID id MEMBER id FINAL)
    Q_PROPERTY(QString title READ title FINAL)
    Q_PROPERTY(bool enabled MEMBER enabled FINAL)
    Q_PROPERTY(QString stateText MEMBER stateText FINAL)
    Q_PROPERTY(Tones::Tone stateTone MEMBER stateTone FINAL)
    Q_PROPERTY(bool known MEMBER known FINAL)
    Q_PROPERTY(QList<QDateTime> snapshotDates MEMBER snapshotDates FINAL)
    Q_PROPERTY(int snapshotCount READ snapshotCount FINAL)
    Q_PROPERTY(qint64 size MEMBER size FINAL)
    Q_PROPERTY(QString error MEMBER error FINAL)
    Q_PROPERTY(bool loading MEMBER loading FINAL)

public:
    DestinationID id = DestinationID::Local;
    bool enabled = false;
    QString stateText;
    Tone stateTone = Tone::Off;
    bool known = false;             ///< whether its repository has been read
    QList<QDateTime> snapshotDates; ///< of this machine's versions, newest first
    qint64 size = -1;               ///< bytes of the whole repository; -1 while not known
    QString error;                  ///< shown as it stands; empty when there is none
    bool loading = false;

    bool operator==(const DestinationState &) const = default;

    [[nodiscard]] QString title() const { return DestinationIDs::title(id); }
    [[nodiscard]] int snapshotCount() const { return static_cast<int>(snapshotDates.size()); }
};
