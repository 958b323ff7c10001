#pragma once

#include "state/AppConfig.h"

#include <QString>
#include <QStringList>

/// What a backup reads: the folders of the settings as they are on this machine now.
namespace Sources {

/// A source that is a link, and where it leads in the end.
struct Link
{
    QString path;
    QString target; ///< full path without any link in it
};

/// The sources that exist, as full paths in their order, none twice. restic saves a link as a link,
/// so each link is followed by the links that it leads through and by its target.
QStringList existing(const AppConfig &config);

/// Those of them that are links.
QList<Link> links(const QStringList &sources);

/// Every path by which a walk through these sources can reach an existing folder: its own path,
/// paths through a source that is a link, and second mounts of the same place.
QStringList waysTo(const QString &folder, const QStringList &sources);

} // namespace Sources
