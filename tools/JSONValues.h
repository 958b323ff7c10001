#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QLatin1String>
#include <QList>
#include <QString>

#include <optional>

/// Values from a tool's JSON.

/// 0 when the key is missing or its value isn't a number.
double number(const QJsonObject &object, QLatin1String key);

/// The same without its fraction, limited to the range of the type.
qint64 int64(const QJsonObject &object, QLatin1String key);

/// Absent when the key is missing or its value isn't a text.
std::optional<QString> text(const QJsonObject &object, QLatin1String key);

/// A list whose elements are all objects; absent for anything else.
std::optional<QList<QJsonObject>> objects(const QJsonValue &value);
/// The same for a whole JSON document.
std::optional<QList<QJsonObject>> objectsOfDocument(const QString &document);

/// A date as restic writes it, with up to nine digits of a second's fraction; absent for other
/// text.
std::optional<QDateTime> parseResticDate(QString text);
