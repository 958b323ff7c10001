#pragma once

#include "ui/design/VerticalGradient.h"

#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

/// What a surface looks like: a rounded rectangle with a vertical gradient, a rim inside its edge
/// and a blurred shadow. Lengths are points.
struct SurfaceStyle
{
    qreal radius = 0;        ///< of the corners; at most half the smaller side
    bool continuous = false; ///< corners whose curvature grows gradually
    VerticalGradient fill;
    VerticalGradient rim;
    qreal rimWidth = 0;
    QColor shadow = Qt::transparent;
    qreal shadowRadius = 0; ///< blur radius
    QPointF shadowOffset;
    qreal brightness = 0; ///< added to the fill
    QRectF hole;          ///< an ellipse that is cut out; empty: none
};

struct SurfacePicture
{
    QImage image;
    qreal margin = 0;   ///< of the picture around the surface on each side, in points
    int stretched = -1; ///< the column that may be stretched to any width; -1: none
    bool flat = false;  ///< that column is the whole picture
};

/// The outline of a surface in a rectangle.
QPainterPath surfacePath(const QRectF &rectangle, qreal radius, bool continuous);

/// The picture of a surface; scale: pixels per point. Recent pictures are cached: one of the same
/// style and height serves any width. Only for the window's thread.
SurfacePicture surfacePicture(const SurfaceStyle &style, const QSizeF &size, qreal scale);
