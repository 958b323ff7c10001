#pragma once

#include <QString>
#include <QStringList>

/// The notices of the open-source parts, which are files of the package.
namespace Licenses {

/// What there are notices of, restic and rclone first.
QStringList names();

/// The notice of one of them; "Licenza non trovata." when there is none that can be read.
QString text(const QString &name);

} // namespace Licenses
