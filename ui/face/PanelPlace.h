#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where the panel of the tray opens.
namespace PanelPlace {

/// The upper left corner of a panel of this size, inside of the screen's free area: beside the tray
/// item, or in the usual corner of trays when the desktop doesn't report the item's place (an empty
/// `item`). `screen` is the whole screen, `free` the part that the desktop's panels leave.
QPoint corner(QSize panel, const QRect &item, const QRect &screen, const QRect &free);

} // namespace PanelPlace
