#pragma once

#include <QString>

#include <optional>

/// While rclone replaces a file there are two more beside it: the new one, with a number behind the
/// name, and the old one, with ".old" and a number. They stay when rclone is killed.
///
/// Gives such a name without the number; absent when it has no number that rclone would put there.
/// rclone may choose any number of 32 bits. A small one or a date counts as the user's own mark on
/// a copy; rclone chooses one of those about once in four thousand times.
std::optional<QString> withoutTemporaryNumber(const QString &name);
