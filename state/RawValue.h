#pragma once

#include <QMetaEnum>
#include <QString>

#include <optional>
#include <type_traits>

// The text that stands for an enumerator in our files: its name with a small first letter. The
// enumeration must be known to Qt (Q_ENUM or Q_ENUM_NS).

/// Empty for a number that is no value of the enumeration.
QString rawValue(const QMetaEnum &type, int value);

/// The value that a raw text stands for; absent for any other text.
std::optional<int> fromRawValue(const QMetaEnum &type, const QString &rawValue);

template <typename Enum>
requires std::is_enum_v<Enum> QString rawValue(Enum value)
{
    return rawValue(QMetaEnum::fromType<Enum>(), static_cast<int>(value));
}

template <typename Enum>
requires std::is_enum_v<Enum> std::optional<Enum> fromRawValue(const QString &rawValue)
{
    const std::optional<int> value = fromRawValue(QMetaEnum::fromType<Enum>(), rawValue);
    return value ? std::optional(static_cast<Enum>(*value)) : std::nullopt;
}
