#include "tools/JSONValues.h"

#include <QJsonValue>

#include <limits>

double number(const QJsonObject &object, QLatin1String key)
{
    return object.value(key).toDouble();
}

qint64 int64(const QJsonObject &object, QLatin1String key)
{
    static constexpr qint64 least = std::numeric_limits<qint64>::min();
    static constexpr qint64 most = std::numeric_limits<qint64>::max();
    const QJsonValue value = object.value(key);
    const double real = value.toDouble();
    // Outside these bounds the conversion of a double is undefined.
    if (real >= static_cast<double>(most)) {
        return most;
    }
    if (real <= static_cast<double>(least)) {
        return least;
    }
    return value.toInteger(static_cast<qint64>(real));
}
