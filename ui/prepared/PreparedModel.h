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
    Q_PROPERTY(AppModel *model READ model NOTIFY stateChanged FINAL)

public:
    explicit PreparedModel(QObject *parent = nullptr);

    [[nodiscard]] QString state() const { return m_state; }
    void setState(const QString &state);
    [[nodiscard]] static QStringList states();
    [[nodiscard]] AppModel *model() { return m_model.get(); }

    /// The requests to the desktop since the last call: see NotedDesktop.
    Q_INVOKABLE QStringList takeAsked();
    /// Gives access to the whole disk, which the model finds at its next check.
    Q_INVOKABLE void giveAccess();
    /// Lets the keyring give a key, in a state where it gave none.
    Q_INVOKABLE void giveKey();
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
