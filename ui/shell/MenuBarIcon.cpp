#include "ui/shell/MenuBarIcon.h"

#include <QFile>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <QtMath>

#include <algorithm>
#include <array>

namespace {

// Panels on Linux also ask for 22, 24 and 32 pixels.
constexpr std::array scales{1.0, 22.0 / 18, 24.0 / 18, 1.5, 32.0 / 18, 2.0, 3.0};
constexpr std::array darkPanels{QLatin1String("GNOME"), QLatin1String("Unity"),
                                QLatin1String("Pantheon"), QLatin1String("Budgie")};

QImage ground(qreal scale)
{
    const int side = qRound(MenuBarIcon::points * scale);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

QIcon iconOf(QImage (*draw)(qreal, const QColor &), const QColor &color)
{
    QIcon icon;
    for (const qreal scale : scales) {
        // Panels choose by pixels.
        QImage image = draw(scale, color);
        image.setDevicePixelRatio(1);
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

void drawTicks(QPainter &painter, const QColor &color)
{
    constexpr int ticks = 12;
    constexpr int lit = 9;
    constexpr qreal dimmed = 0.4;
    constexpr qreal inner = 6.4;
    constexpr qreal outer = 8.3;
    for (int tick = 0; tick < ticks; ++tick) {
        QColor shade = color;
        shade.setAlphaF(shade.alphaF() * static_cast<float>(tick < lit ? 1.0 : dimmed));
        painter.setPen(QPen(shade, 1.5, Qt::SolidLine, Qt::RoundCap));
        const qreal angle = qDegreesToRadians(90.0 - 30.0 * tick);
        const QPointF direction(qCos(angle), qSin(angle));
        painter.drawLine(direction * inner, direction * outer);
    }
}

void drawHands(QPainter &painter, const QColor &color)
{
    QPainterPath hands(QPointF(0, 4.2));
    hands.lineTo(0, 0);
    hands.lineTo(2.648842778576781, -1.4084146883576725);
    painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(hands);
}

} // namespace

QImage MenuBarIcon::image(qreal scale, const QColor &color)
{
    QImage image = ground(scale);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(points / 2.0, points / 2.0);
    painter.scale(1, -1); // up is positive
    drawTicks(painter, color);
    drawHands(painter, color);
    return image;
}

QImage MenuBarIcon::busyImage(qreal scale, const QColor &color)
{
    QImage image = ground(scale);
    QPainter painter(&image);
    QSvgRenderer arrows(QStringLiteral(":/vellomar/shell/arrow-repeat.svg"));
    constexpr qreal margin = 1;
    arrows.render(&painter, QRectF(margin, margin, points - 2 * margin, points - 2 * margin));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRectF(0, 0, points, points), color);
    return image;
}

QIcon MenuBarIcon::icon(const QColor &color)
{
    return iconOf(&image, color);
}

QIcon MenuBarIcon::busyIcon(const QColor &color)
{
    return iconOf(&busyImage, color);
}

QColor MenuBarIcon::colorFor(const QString &desktops, const QColor &text)
{
    const QStringList names = desktops.split(u':', Qt::SkipEmptyParts);
    const bool dark =
        std::any_of(darkPanels.begin(), darkPanels.end(), [&names](QLatin1String panel) {
            return names.contains(panel, Qt::CaseInsensitive);
        });
    return dark ? QColor(Qt::white) : text;
}
