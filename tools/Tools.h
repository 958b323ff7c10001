#pragma once

#include <QString>

#include <optional>

/// Where the executables of other programs are.
namespace Tools {

/// Full path of an executable: in the private bin/ of our resources, else where Homebrew or a local
/// installation puts it; absent when it is in none of these. PATH isn't consulted, and each call
/// looks anew.
std::optional<QString> find(const QString &name);

} // namespace Tools
