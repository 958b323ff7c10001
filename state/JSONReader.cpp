#include "state/JSONReader.h"

#include "state/JSONFile.h"

#include <QJsonArray>

#include <utility>

JSONReader::JSONReader(QJsonObject object)
    : m_object(std::move(object))
{
}

QString JSONReader::text(const char *key)
{
    return textOf(required(key));
}

bool JSONReader::boolean(const char *key)
{
    const QJsonValue value = required(key);
    m_good = m_good && value.isBool();
    return value.toBool();
}

double JSONReader::real(const char *key)
{
    const QJsonValue value = required(key);
    m_good = m_good && value.isDouble();
    return value.toDouble();
}

QDateTime JSONReader::date(const char *key)
{
    return dateOf(required(key));
}

QStringList JSONReader::texts(const char *key)
{
    const QJsonValue value = required(key);
    m_good = m_good && value.isArray();
    QStringList result;
    const QJsonArray elements = value.toArray();
    for (const auto element : elements) {
        result.append(textOf(element));
    }
    return result;
}

QUuid JSONReader::id(const char *key)
{
    const QString plain = text(key);
    const QUuid id = QUuid::fromString(plain);
    // Qt also accepts braces, and anything after a valid beginning.
    m_good = m_good && id.toString(QUuid::WithoutBraces).compare(plain, Qt::CaseInsensitive) == 0;
    return id;
}

std::optional<QString> JSONReader::optionalText(const char *key)
{
    const auto value = present(key);
    return value ? std::optional(textOf(*value)) : std::nullopt;
}

std::optional<qint64> JSONReader::optionalInteger(const char *key)
{
    const auto value = present(key);
    if (!value) {
        return std::nullopt;
    }
    return integerWithin(*value, std::numeric_limits<qint64>::min(),
                         std::numeric_limits<qint64>::max());
}

std::optional<QDateTime> JSONReader::optionalDate(const char *key)
{
    const auto value = present(key);
    return value ? std::optional(dateOf(*value)) : std::nullopt;
}

std::optional<QJsonObject> JSONReader::optionalObject(const char *key)
{
    const auto value = present(key);
    if (!value) {
        return std::nullopt;
    }
    m_good = m_good && value->isObject();
    return value->toObject();
}

QJsonValue JSONReader::required(const char *key)
{
    QJsonValue value = m_object.value(QLatin1String(key));
    m_good = m_good && !value.isUndefined();
    return value;
}

std::optional<QJsonValue> JSONReader::present(const char *key) const
{
    QJsonValue value = m_object.value(QLatin1String(key));
    if (value.isUndefined() || value.isNull()) {
        return std::nullopt;
    }
    return value;
}

QString JSONReader::textOf(const QJsonValue &value)
{
    m_good = m_good && value.isString();
    return value.toString();
}

QDateTime JSONReader::dateOf(const QJsonValue &value)
{
    const std::optional<QDateTime> date = JSONFile::date(textOf(value));
    m_good = m_good && date.has_value();
    return date.value_or(QDateTime());
}

qint64 JSONReader::integerWithin(const QJsonValue &value, qint64 least, qint64 most)
{
    // toInteger returns its default for anything but a whole number; if two different defaults
    // give the same result, that is the number.
    const qint64 number = value.toInteger(0);
    const bool whole = value.isDouble() && number == value.toInteger(1);
    m_good = m_good && whole && number >= least && number <= most;
    return number;
}
