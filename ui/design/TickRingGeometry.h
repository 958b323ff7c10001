#pragma once

#include <QLineF>
#include <QList>
#include <QSizeF>

/// One tick of a ring; its line runs from the inner to the outer end.
struct Tick
{
    QLineF line;
    qreal width = 0;
    bool major = false;
    qreal dim = 0; ///< opacity of the tick while it isn't lit
};

/// The ticks of a ring that fills a canvas, clockwise from the top. Length and thickness are
/// fractions of the radius; each majorEvery-th tick is longer (0: none).
QList<Tick> tickRing(const QSizeF &canvas, int count, qreal length, qreal thickness,
                     int majorEvery);
