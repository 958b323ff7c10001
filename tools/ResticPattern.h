#pragma once

#include <QString>

/// A pattern of restic's that matches only this text: with a backslash before each \ * ? and [, and
/// with brackets around each replacement character, which stands for a byte that isn't UTF-8.
QString escapedPattern(QString text);

/// Whether restic takes this as an exclusion. With one that it refuses, it saves nothing.
bool isResticPattern(const QString &pattern);

/// A line of the file for restic's --exclude-file that matches only this path.
QString excludeLine(const QString &path);
