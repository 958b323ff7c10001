#pragma once

#include <QDateTime>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The formats of dates, durations, sizes and counts (state/Fmt.h) for QML.
class Formats : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Fmt)
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE static QString relative(const QDateTime &date);
    Q_INVOKABLE static QString since(const QDateTime &date);
    Q_INVOKABLE static QString duration(double seconds);
    Q_INVOKABLE static QString dateTime(const QDateTime &date);
    Q_INVOKABLE static QString date(const QDateTime &date);
    Q_INVOKABLE static QString time(const QDateTime &date);
    Q_INVOKABLE static QString day(const QDateTime &date);
    Q_INVOKABLE static QString byteCount(qint64 bytes);
    Q_INVOKABLE static QString number(qint64 count);
};
