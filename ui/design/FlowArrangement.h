#pragma once

#include <QList>
#include <QPointF>
#include <QSizeF>

/// Where each of a row of boxes stands when they wrap like words, and the room that they take.
struct FlowArrangement
{
    QList<QPointF> places;
    QSizeF size;
};

/// Boxes wrap where the next one would reach beyond the available width; one that is wider than
/// that stands alone in its line. Infinity as the width: they never wrap.
FlowArrangement flowArrangement(const QList<QSizeF> &boxes, qreal available, qreal spacing);
