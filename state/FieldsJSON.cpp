#include "state/FieldsJSON.h"

#include "state/JSONFile.h"
#include "state/JSONReader.h"
#include "state/RawValue.h"

#include <QDateTime>
#include <QJsonArray>
#include <QMetaProperty>
#include <QUuid>
#include <QVariant>

#include <cstdint>

namespace {

using OptionalText = std::optional<QString>;
using OptionalInteger = std::optional<qint64>;

/// Undefined for an optional field that is absent.
template <typename T>
QJsonValue present(const std::optional<T> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Undefined);
}

QJsonValue encodedField(const QMetaProperty &field, const QVariant &value)
{
    if (field.isEnumType()) {
        return rawValue(field.enumerator(), value.toInt());
    }
    const QMetaType type = field.metaType();
    if (type == QMetaType::fromType<OptionalText>()) {
        return present(value.value<OptionalText>());
    }
    if (type == QMetaType::fromType<OptionalInteger>()) {
        return present(value.value<OptionalInteger>());
    }
    switch (type.id()) {
    case QMetaType::QDateTime:
        return JSONFile::dateText(value.toDateTime());
    case QMetaType::QUuid:
        return value.toUuid().toString(QUuid::WithoutBraces);
    case QMetaType::QStringList:
        return QJsonArray::fromStringList(value.toStringList());
    default:
        return QJsonValue::fromVariant(value);
    }
}

QVariant decodedField(const QMetaProperty &field, JSONReader &reader)
{
    const char *const key = field.name();
    if (field.isEnumType()) {
        return reader.named(key, [type = field.enumerator()](const QString &text) {
            return fromRawValue(type, text);
        });
    }
    const QMetaType type = field.metaType();
    if (type == QMetaType::fromType<OptionalText>()) {
        return QVariant::fromValue(reader.optionalText(key));
    }
    if (type == QMetaType::fromType<OptionalInteger>()) {
        return QVariant::fromValue(reader.optionalInteger(key));
    }
    switch (type.id()) {
    case QMetaType::Bool:
        return reader.boolean(key);
    case QMetaType::Int:
        return reader.integer<std::int32_t>(key);
    case QMetaType::LongLong:
        return reader.integer(key);
    case QMetaType::Double:
        return reader.real(key);
    case QMetaType::QString:
        return reader.text(key);
    case QMetaType::QStringList:
        return reader.texts(key);
    case QMetaType::QDateTime:
        return reader.date(key);
    case QMetaType::QUuid:
        return reader.id(key);
    default:
        Q_UNREACHABLE();
    }
}

} // namespace

QJsonObject FieldsJSON::encoded(const QMetaObject &type, const void *value)
{
    QJsonObject object;
    for (int index = 0; index < type.propertyCount(); ++index) {
        const QMetaProperty field = type.property(index);
        if (field.isStored()) {
            // An undefined value makes no key.
            object.insert(QLatin1String(field.name()),
                          encodedField(field, field.readOnGadget(value)));
        }
    }
    return object;
}

bool FieldsJSON::decode(const QMetaObject &type, void *value, const QJsonObject &object)
{
    JSONReader reader(object);
    for (int index = 0; index < type.propertyCount(); ++index) {
        const QMetaProperty field = type.property(index);
        if (field.isStored() && !field.writeOnGadget(value, decodedField(field, reader))) {
            return false;
        }
    }
    return reader.isGood();
}
