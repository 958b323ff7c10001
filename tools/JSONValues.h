#pragma once

#include <QJsonObject>
#include <QLatin1String>

/// Numbers from a tool's JSON; 0 when the key is missing or its value isn't a number.

double number(const QJsonObject &object, QLatin1String key);

/// The number without its fraction, limited to the range of the type.
qint64 int64(const QJsonObject &object, QLatin1String key);
