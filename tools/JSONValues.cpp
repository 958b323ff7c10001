#include "tools/JSONValues.h"

#include "state/JSONFile.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QRegularExpression>

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

std::optional<QString> text(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QList<QJsonObject>> objects(const QJsonValue &value)
{
    if (!value.isArray()) {
        return std::nullopt;
    }
    QList<QJsonObject> result;
    const QJsonArray elements = value.toArray();
    for (const auto element : elements) {
        if (!element.isObject()) {
            return std::nullopt;
        }
        result.append(element.toObject());
    }
    return result;
}

std::optional<QList<QJsonObject>> objectsOfDocument(const QString &document)
{
    const auto parsed = JSONFile::decode(document.toUtf8());
    return parsed && parsed->isArray() ? objects(parsed->array()) : std::nullopt;
}

std::optional<QDateTime> parseResticDate(QString text)
{
    static const QRegularExpression fraction(QStringLiteral(R"(\.\d+)"));
    return JSONFile::date(text.remove(fraction));
}
