#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

/// The notices of the open-source parts, for QML. A text is read when it is asked for.
class Notices : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// What there are notices of, restic and rclone first.
    Q_INVOKABLE static QStringList names();
    /// What to show for one of them.
    Q_INVOKABLE static QString text(const QString &name);
};
