#pragma once

#include <QStringList>

#include <functional>

/// The settings program of a desktop.
namespace SystemSettings {

/// Finds a program of the search path: its full path, empty when there is none.
using Finder = std::function<QString(const QString &name)>;

/// The command that opens the settings page for the permissions of programs, or the nearest page
/// that can be opened on this desktop. Empty when there is none. `desktops` are the names in
/// XDG_CURRENT_DESKTOP, separated by colons.
QStringList privacyCommand(const QString &desktops, const Finder &find);

} // namespace SystemSettings
