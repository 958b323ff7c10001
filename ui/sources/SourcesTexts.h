#pragma once

#include <QString>

#include <optional>

/// The words of the sources page.
namespace SourcesTexts {

/// A folder as its user calls it: the home folder by a name of its own, any other one by the last
/// component of its path. Not empty, whatever the path.
QString name(const QString &path, const QString &home);

/// The symbol of a folder.
QString symbol(const QString &path, const QString &home);

/// The size of a folder in bytes; empty while it isn't known.
QString size(std::optional<qint64> bytes);

/// What the button for measuring says; `soFar` counts while it is under way.
QString measure(bool measuring, qint64 soFar);

/// What all folders take together; empty while that isn't known.
QString total(std::optional<qint64> bytes);

/// What is wrong with an exclusion that restic refuses.
QString fault();

/// The same of all of them together; empty when there are none.
QString faults(qsizetype count);

} // namespace SourcesTexts
