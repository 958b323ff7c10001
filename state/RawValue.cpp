#include "state/RawValue.h"

namespace {

QString smallFirst(const char *key)
{
    QString text = QString::fromLatin1(key);
    text.replace(0, 1, text.left(1).toLower());
    return text;
}

} // namespace

QString rawValue(const QMetaEnum &type, int value)
{
    const char *const key = type.valueToKey(value);
    return key == nullptr ? QString() : smallFirst(key);
}

std::optional<int> fromRawValue(const QMetaEnum &type, const QString &rawValue)
{
    for (int index = 0; index < type.keyCount(); ++index) {
        if (smallFirst(type.key(index)) == rawValue) {
            return type.value(index);
        }
    }
    return std::nullopt;
}
