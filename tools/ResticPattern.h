#pragma once

#include <QString>

/// A pattern of restic's that matches only this text: with a backslash before each \ * ? and [, and
/// with brackets around each replacement character, which stands for a byte that isn't UTF-8.
QString escapedPattern(QString text);

/// Whether this is right as a line of the file for restic's --exclude-file. With one line that
/// restic refuses, it saves nothing; some that are wrong behind an asterisk it accepts, and never
/// applies.
bool isResticPattern(const QString &pattern);

/// A line of the file for restic's --exclude-file that matches only this path.
QString excludeLine(const QString &path);
