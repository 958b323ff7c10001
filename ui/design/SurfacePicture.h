#pragma once

#include "ui/design/VerticalGradient.h"

#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

/// What a surface looks like: a rounded shape filled from top to bottom, a rim inside its edge, and
/// a soft shadow around it. Lengths are points.
struct SurfaceStyle
{
    qreal radius = 0;        ///< of the corners; half the smaller side at most
    bool continuous = false; ///< corners whose curve sets in softly
    VerticalGradient fill;
    VerticalGradient rim;
    qreal rimWidth = 0;
    QColor shadow = Qt::transparent;
    qreal shadowRadius = 0; ///< how far it is blurred
    QPointF shadowOffset;
    qreal brightness = 0; ///< added to the fill
    QRectF hole;          ///< a round one, cut out for what stands there; empty: none
};

struct SurfacePicture
{
    QImage image;
    qreal margin = 0;   ///< how far the picture reaches beyond the surface on each side, in points
    int stretched = -1; ///< the column that may be drawn in any width; -1: the picture is whole
    bool flat = false;  ///< that column is all of the picture
};

/// The outline of a surface in a rectangle.
QPainterPath surfacePath(const QRectF &rectangle, qreal radius, bool continuous);

/// The picture of a surface at so many pixels a point, from a store of those painted lately: the
/// same style and height in any width is painted once. For the thread of the window only.
SurfacePicture surfacePicture(const SurfaceStyle &style, const QSizeF &size, qreal scale);
