#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <limits>
#include <optional>

/// Reads the fields of one JSON object strictly: it fails as a whole when a required key is
/// missing, or any value has the wrong type or is out of range. Read every field first, then ask
/// isGood() once; after a failure the values are unusable.
class JSONReader
{
public:
    explicit JSONReader(QJsonObject object);

    [[nodiscard]] bool isGood() const { return m_good; }

    QString text(const char *key);
    bool boolean(const char *key);
    double real(const char *key);
    QDateTime date(const char *key);
    QStringList texts(const char *key);
    /// An id in its plain form, without braces.
    QUuid id(const char *key);

    /// A whole number that fits T.
    template <typename T = qint64>
    T integer(const char *key)
    {
        return static_cast<T>(integerWithin(required(key), std::numeric_limits<T>::min(),
                                            std::numeric_limits<T>::max()));
    }

    /// An enumeration value by its raw text; `find` gives absent for an unknown text.
    template <typename Find>
    auto named(const char *key, Find find) -> typename decltype(find(QString()))::value_type
    {
        const auto value = find(text(key));
        if (!value) {
            m_good = false;
            return {};
        }
        return *value;
    }

    /// Optional fields: absent for a missing key and for null, without a failure.
    std::optional<QString> optionalText(const char *key);
    std::optional<qint64> optionalInteger(const char *key);
    std::optional<QDateTime> optionalDate(const char *key);
    std::optional<QJsonObject> optionalObject(const char *key);

private:
    QJsonValue required(const char *key);
    /// The value of an optional key; absent for a missing key and for null.
    [[nodiscard]] std::optional<QJsonValue> present(const char *key) const;
    QString textOf(const QJsonValue &value);
    QDateTime dateOf(const QJsonValue &value);
    qint64 integerWithin(const QJsonValue &value, qint64 least, qint64 most);

    QJsonObject m_object;
    bool m_good = true;
};
