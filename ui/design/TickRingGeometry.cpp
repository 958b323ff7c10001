#include "ui/design/TickRingGeometry.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

QList<Tick> tickRing(const QSizeF &canvas, int count, qreal length, qreal thickness, int majorEvery)
{
    const qreal radius = std::min(canvas.width(), canvas.height()) / 2;
    const QPointF centre(canvas.width() / 2, canvas.height() / 2);
    QList<Tick> ticks;
    for (int i = 0; i < count; ++i) {
        const bool major = majorEvery > 0 && i % majorEvery == 0;
        const qreal angle = 2 * M_PI * i / count - M_PI / 2;
        const QPointF direction(std::cos(angle), std::sin(angle));
        const qreal inner = radius * (1 - length * (major ? 1.35 : 1));
        const qreal outer = radius * 0.985;
        ticks.append({QLineF(centre + direction * inner, centre + direction * outer),
                      thickness * radius, major, major ? 0.34 : 0.17});
    }
    return ticks;
}
