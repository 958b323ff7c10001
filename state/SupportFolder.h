#pragma once

#include <QString>

#include <optional>

/// Whether the support folder serves its purpose.
namespace SupportFolder {

/// Why no file can be made in it, as the user reads it ("permesso negato"); absent when one can.
/// Finds out by making a file and deleting it: not for the window's thread.
std::optional<QString> fault();

/// The user's words for an error number of the system that a file of the folder met with.
QString words(int error);

} // namespace SupportFolder
