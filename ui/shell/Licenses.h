#pragma once

#include <QString>
#include <QStringList>

/// The licence notices of the open-source components, which are files of the package.
namespace Licenses {

/// The components that have a notice, restic and rclone first.
QStringList names();

/// The notice of a component; "Licenza non trovata." when it can't be read.
QString text(const QString &name);

} // namespace Licenses
