#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where the panel of the tray opens.
namespace PanelPlace {

/// The upper left corner of a panel of that size, whole on the screen's free area: beside the tray
/// item, or in the corner where trays mostly are when the desktop doesn't tell where its own is
/// (an empty `item`). `screen` is the whole screen, `free` what panels of the desktop leave of it.
QPoint corner(QSize panel, const QRect &item, const QRect &screen, const QRect &free);

} // namespace PanelPlace
