#pragma once

#include <QString>

#include <optional>

/// Where the executables of restic and rclone are.
namespace Tools {

/// Full path of an executable: in bin/ of our resources, otherwise where Homebrew or a local
/// installation puts it; absent when it is in none of these. PATH is not searched. Nothing is
/// cached.
std::optional<QString> find(const QString &name);

} // namespace Tools
