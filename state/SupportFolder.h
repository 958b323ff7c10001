#pragma once

#include <QString>

#include <optional>

/// Whether the support folder can be written.
namespace SupportFolder {

/// Why no file can be made in it, as the user reads it ("permesso negato"); absent when one can.
/// Waits for the disk, as it makes a file and deletes it: not for the window's thread.
std::optional<QString> fault();

/// The words for an `errno` of a file in this folder, as the user reads them.
QString words(int error);

} // namespace SupportFolder
