#pragma once

#include "model/AppModel.h"
#include "ui/prepared/NotedDesktop.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>

/// A model at rest that shows one of the prepared states, for QML.
class PreparedModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString state READ state WRITE setState NOTIFY stateChanged FINAL)
    Q_PROPERTY(QStringList states READ states CONSTANT FINAL)
    Q_PROPERTY(AppModel *model READ model CONSTANT FINAL)

public:
    explicit PreparedModel(QObject *parent = nullptr);

    [[nodiscard]] QString state() const { return m_state; }
    void setState(const QString &state);
    [[nodiscard]] static QStringList states();
    [[nodiscard]] AppModel *model() { return &m_model; }

    /// What the desktop was asked for since the last time: see NotedDesktop.
    Q_INVOKABLE QStringList takeAsked();
    /// Changes the run in progress; none where the state has none.
    Q_INVOKABLE void setPercent(double percent);
    Q_INVOKABLE void setKitNotice(const QString &text, bool warning);
    Q_INVOKABLE void setKeyError(const QString &text);

Q_SIGNALS:
    void stateChanged();

private:
    QString m_state = QStringLiteral("fresh");
    AppModel::Shown m_shown;
    std::shared_ptr<NotedDesktop> m_desktop = std::make_shared<NotedDesktop>();
    AppModel m_model;
};
