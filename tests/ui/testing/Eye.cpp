#include "tests/ui/testing/Eye.h"

#include <QQuickWindow>
#include <QtMath>

#include <algorithm>
#include <cstdlib>

void Eye::look(QQuickItem *item)
{
    m_seen = item->window()->grabWindow();
}

QColor Eye::at(QQuickItem *item, qreal x, qreal y) const
{
    const QPointF place = item->mapToScene({x, y}) * scale(item);
    const QPoint pixel(qFloor(place.x()), qFloor(place.y()));
    return m_seen.valid(pixel) ? m_seen.pixelColor(pixel) : QColor();
}

QRect Eye::inked(QQuickItem *item, const QRectF &part, const QColor &ground) const
{
    constexpr int rounding = 2;
    const QPointF begin = item->mapToScene(part.topLeft()) * scale(item);
    const QPointF end = item->mapToScene(part.bottomRight()) * scale(item);
    const QRect pixels(QPoint(qFloor(begin.x()), qFloor(begin.y())),
                       QPoint(qCeil(end.x()) - 1, qCeil(end.y()) - 1));
    const QRect looked = pixels.intersected(m_seen.rect());
    QRect box;
    for (int y = looked.top(); y <= looked.bottom(); ++y) {
        for (int x = looked.left(); x <= looked.right(); ++x) {
            const QColor here = m_seen.pixelColor(x, y);
            if (std::abs(here.red() - ground.red()) > rounding ||
                std::abs(here.green() - ground.green()) > rounding ||
                std::abs(here.blue() - ground.blue()) > rounding) {
                box |= QRect(x, y, 1, 1);
            }
        }
    }
    return box;
}

int Eye::sidesDiffer(const QRect &box) const
{
    int most = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            most = std::max(most, difference({x, y}, {box.left() + box.right() - x, y}));
        }
    }
    return most;
}

int Eye::halvesDiffer(const QRect &box) const
{
    int most = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            most = std::max(most, difference({x, y}, {x, box.top() + box.bottom() - y}));
        }
    }
    return most;
}

int Eye::rowsDiffer(const QRect &box) const
{
    int most = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            most = std::max(most, difference({x, y}, {box.left(), y}));
        }
    }
    return most;
}

QColor Eye::pixel(int x, int y) const
{
    return m_seen.valid(x, y) ? m_seen.pixelColor(x, y) : QColor();
}

int Eye::difference(QPoint one, QPoint other) const
{
    const QColor a = pixel(one.x(), one.y());
    const QColor b = pixel(other.x(), other.y());
    return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                     std::abs(a.blue() - b.blue())});
}

qreal Eye::scale(const QQuickItem *item) const
{
    return m_seen.width() / static_cast<qreal>(item->window()->width());
}
