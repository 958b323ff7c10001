#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>

/// The picture of the item in the menu bar or the tray: a ring of twelve ticks, the last three dim,
/// with two clock hands. 18 by 18 points.
namespace MenuBarIcon {

inline constexpr int points = 18;

/// The ring on a transparent ground, with so many dots to a point.
QImage image(qreal scale, const QColor &color);

/// What stands there while a backup runs: two arrows in a circle.
QImage busyImage(qreal scale, const QColor &color);

/// Either for all usual scales.
QIcon icon(const QColor &color);
QIcon busyIcon(const QColor &color);

/// The colour for the panel of a desktop, which doesn't tell its own: white on those whose panel is
/// always dark, the colour of text elsewhere. `desktops` as in XDG_CURRENT_DESKTOP.
QColor colorFor(const QString &desktops, const QColor &text);

} // namespace MenuBarIcon
