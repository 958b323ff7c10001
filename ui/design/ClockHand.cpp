#include "ui/design/ClockHand.h"

#include "ui/design/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <algorithm>

ClockHand::ClockHand(QQuickItem *parent)
    : PicturedItem(parent)
{
}

PicturedItem::Picture ClockHand::draw(qreal scale)
{
    QImage image(qCeil(width() * scale), qCeil(height() * scale),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const qreal radius = std::min(width(), height()) / 2;
    const QPointF centre(width() / 2, height() / 2);
    QPainterPath hand(centre - QPointF(0, 0.46 * radius));
    hand.lineTo(centre);
    hand.lineTo(centre + QPointF(0.3 * radius, 0.16 * radius));

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.setPen(
        QPen(Theme::white(1), 0.14 * radius, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(hand);
    painter.end();
    return {image, QRectF(QPointF(), QSizeF(image.size()) / scale)};
}
