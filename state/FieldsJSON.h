#pragma once

#include <QJsonObject>
#include <QMetaObject>

#include <optional>

/// The JSON of a value whose fields are properties of a gadget: one key for each of them, of the
/// property's name. A property that only follows from others is marked STORED false, and is no
/// field.
///
/// A field can be a truth value, a whole or a real number, a text, a list of texts, a date, an id,
/// an enumeration that Qt knows (as its raw value), or an optional text or whole number, which has
/// no key while absent.
namespace FieldsJSON {

QJsonObject encoded(const QMetaObject &type, const void *value);

/// Strict: false where a key is missing or has a value of the wrong type, except that optional
/// fields may be missing or null. Other keys are passed over. A value that failed means nothing.
bool decode(const QMetaObject &type, void *value, const QJsonObject &object);

template <typename Value>
QJsonObject encoded(const Value &value)
{
    return encoded(Value::staticMetaObject, &value);
}

template <typename Value>
std::optional<Value> decoded(const QJsonObject &object)
{
    Value value;
    return decode(Value::staticMetaObject, &value, object) ? std::optional(value) : std::nullopt;
}

} // namespace FieldsJSON
