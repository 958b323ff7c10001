#pragma once

#include <QJsonObject>
#include <QMetaObject>

#include <optional>

/// The JSON of a value whose fields are the properties of a gadget: one key for each, named as the
/// property. A property that is derived from others is marked STORED false, and is no field.
///
/// A field can be a boolean, an integer or a real number, a text, a list of texts, a date, an id,
/// an enumeration that Qt knows (as its raw value), or an optional text or integer, whose key is
/// left out while it is absent.
namespace FieldsJSON {

QJsonObject encoded(const QMetaObject &type, const void *value);

/// Strict: false when a key is missing or has a value of the wrong type, except that optional
/// fields may be missing or null. Unknown keys are ignored. After a failure the value is unusable.
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
