#pragma once

#include <QByteArray>
#include <QFileDevice>
#include <QString>

#include <optional>

/// Files that only the user may read, at a path of the user's choice.
namespace PrivateFile {

inline constexpr QFileDevice::Permissions ownerOnly =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Writes or replaces a file atomically; only its owner may ever read it, even while it is written.
/// Absent on success, otherwise the system's description of the failure.
std::optional<QString> write(const QString &path, const QByteArray &content);

} // namespace PrivateFile
