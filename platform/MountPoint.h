#pragma once

#include <QString>

#include <optional>

/// Mount point of the file system that holds an existing path; absent when it can't be told.
std::optional<QString> mountPoint(const QString &path);
