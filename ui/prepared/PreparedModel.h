#pragma once

#include "ui/prepared/PreparedWorld.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>

/// A model in a world of one of the prepared states, for QML. Changing the state makes a new world
/// and a new model, which shows the same page and the same kit.
class PreparedModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString state READ state WRITE setState NOTIFY stateChanged FINAL)
    Q_PROPERTY(QStringList states READ states CONSTANT FINAL)
    Q_PROPERTY(QStringList sourcesStates READ sourcesStates CONSTANT FINAL)
    Q_PROPERTY(QStringList destinationsStates READ destinationsStates CONSTANT FINAL)
    Q_PROPERTY(AppModel *model READ model NOTIFY stateChanged FINAL)

public:
    explicit PreparedModel(QObject *parent = nullptr);

    [[nodiscard]] QString state() const { return m_state; }
    void setState(const QString &state);
    [[nodiscard]] static QStringList states();
    [[nodiscard]] static QStringList sourcesStates();
    [[nodiscard]] static QStringList destinationsStates();
    [[nodiscard]] AppModel *model() { return m_model.get(); }

    /// The requests to the desktop since the last call: see NotedDesktop.
    Q_INVOKABLE QStringList takeAsked();
    /// Gives access to the whole disk, which the model finds at its next check.
    Q_INVOKABLE void giveAccess();
    /// Lets the keyring give a key, in a state where it gave none.
    Q_INVOKABLE void giveKey();
    /// The user chooses these folders in each panel from now on; none cancels it.
    Q_INVOKABLE void chooseFolders(const QStringList &folders);
    /// What is under way (a connection, a measurement, a look at a disk) comes to its end.
    Q_INVOKABLE void finish();
    /// How connecting a place comes out from now on; empty is a success.
    Q_INVOKABLE void setConnectionError(const QString &error);
    /// Connecting takes until finish() from now on.
    Q_INVOKABLE void holdConnections();
    /// Google Drive reports this room from now on, in bytes.
    Q_INVOKABLE void setDriveQuota(qint64 used, qint64 total);
    /// The secret that the server was connected with last, for tests of what reaches it.
    Q_INVOKABLE QString secret() const;
    /// Changes the run in progress, if the state has one.
    Q_INVOKABLE void setPercent(double percent);
    Q_INVOKABLE void setKitNotice(const QString &text, bool warning);
    Q_INVOKABLE void setKeyError(const QString &text);

Q_SIGNALS:
    void stateChanged();

private:
    QString m_state = QStringLiteral("fresh");
    PreparedWorld m_world;
    std::unique_ptr<AppModel> m_model;
};
