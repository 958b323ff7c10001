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

    /// The names of the parts that have a notice, restic and rclone first.
    Q_INVOKABLE static QStringList names();
    /// The notice of one of them, or the reason why there is none.
    Q_INVOKABLE static QString text(const QString &name);
};
