#pragma once

#include <QLineF>
#include <QList>
#include <QSizeF>

/// One tick of a ring: a line from its inner to its outer end.
struct Tick
{
    QLineF line;
    qreal width = 0;
    bool major = false;
    qreal dim = 0; ///< opacity of the tick while it isn't lit
};

/// The ticks of a ring that fills a canvas, clockwise from the top. Length and thickness are
/// fractions of the radius; every majorEvery-th tick is a longer one, none at 0.
QList<Tick> tickRing(const QSizeF &canvas, int count, qreal length, qreal thickness,
                     int majorEvery);
