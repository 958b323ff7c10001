#pragma once

#include <QStringList>

#include <functional>

/// The settings program of a desktop.
namespace SystemSettings {

/// Finds a program of the search path: its full path, empty when there is none.
using Finder = std::function<QString(const QString &name)>;

/// The command that opens the settings where programs get their rights, or as near to them as that
/// desktop lets a program come. Empty when it has none. `desktops` are the names in
/// XDG_CURRENT_DESKTOP, with colons between.
QStringList privacyCommand(const QString &desktops, const Finder &find);

} // namespace SystemSettings
