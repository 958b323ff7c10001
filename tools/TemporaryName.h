#pragma once

#include <QString>

#include <optional>

/// The name of a file that rclone has for a moment beside the one that it replaces: the new one has
/// a number behind the name, the one before ".old" and a number. Both stay when rclone is killed.
///
/// Gives the name without the number; absent when there is none that rclone would put there. Any
/// number of 32 bits can be rclone's, but a small one or a date is taken for the user's own mark
/// on a copy: rclone comes to one of those about once in four thousand times.
std::optional<QString> withoutTemporaryNumber(const QString &name);
