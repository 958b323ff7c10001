#pragma once

#include <QByteArray>
#include <QFileDevice>
#include <QString>

#include <optional>

/// Files of the user's choice that nobody else is to read.
namespace PrivateFile {

inline constexpr QFileDevice::Permissions ownerOnly =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Writes a file whole, for its owner's eyes alone from its first byte, in place of one that may be
/// there. Absent on success, otherwise the system's description.
std::optional<QString> write(const QString &path, const QByteArray &content);

} // namespace PrivateFile
