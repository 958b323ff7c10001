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
    QString target; ///< without any link in it
};

/// The sources that exist, in full and in their order, none twice. restic saves a link as a link:
/// so behind one stand the links on its way and what it leads to.
QStringList existing(const AppConfig &config);

/// Those of them that are links.
QList<Link> links(const QStringList &sources);

/// Every path by which a walk through these sources can come to an existing folder: by its own
/// name, by a source that is reached through a link, by a second mount of the same place.
QStringList waysTo(const QString &folder, const QStringList &sources);

} // namespace Sources
