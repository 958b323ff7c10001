#include "tests/ui/Eye.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QtMath>

void Eye::look(QQuickItem *item)
{
    m_seen = item->window()->grabWindow();
}

QColor Eye::at(QQuickItem *item, qreal x, qreal y) const
{
    // Not every renderer's picture tells its scale.
    const qreal scale = m_seen.width() / static_cast<qreal>(item->window()->width());
    const QPointF place = item->mapToScene({x, y}) * scale;
    const QPoint pixel(qFloor(place.x()), qFloor(place.y()));
    return m_seen.valid(pixel) ? m_seen.pixelColor(pixel) : QColor();
}
