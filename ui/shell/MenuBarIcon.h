#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>

/// The picture of the item in the menu bar or the tray: a ring of twelve ticks, the last three dim,
/// with two clock hands. 18 by 18 points.
namespace MenuBarIcon {

inline constexpr int points = 18;

/// The ring on a transparent background, with `scale` pixels per point.
QImage image(qreal scale, const QColor &color);

/// The picture while a backup runs: two arrows in a circle.
QImage busyImage(qreal scale, const QColor &color);

/// One of the two pictures in all usual scales.
QIcon icon(const QColor &color);
QIcon busyIcon(const QColor &color);

/// The colour of the picture: white on desktops whose panel is always dark, otherwise the colour of
/// text, as panels don't report their own colour. `desktops` as in XDG_CURRENT_DESKTOP.
QColor colorFor(const QString &desktops, const QColor &text);

} // namespace MenuBarIcon
