#include "ui/design/Symbol.h"

#include <QCache>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QPainter>
#include <QSvgRenderer>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

/// Side of the drawing for text of one point: symbols are a little higher than capitals.
constexpr qreal sidePerPoint = 1.1;

/// The drawings have one weight. A heavier one gets an outline of the same colour, of this width in
/// units of the drawing (its side is 16).
double outline(int weight)
{
    return std::clamp((weight - QFont::Normal) * 0.0018, 0.0, 0.9);
}

QByteArray drawing(const QString &name, int weight)
{
    QFile file(QStringLiteral(":/vellomar/symbols/") + name + QStringLiteral(".svg"));
    if (name.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray svg = file.readAll();
    if (const double width = outline(weight); width > 0) {
        const QByteArray stroke = "<svg stroke=\"currentColor\" stroke-linejoin=\"round\" "
                                  "stroke-width=\"" +
                                  QByteArray::number(width) + "\" ";
        svg.replace("<svg ", stroke);
        // Half of the outline is outside the drawing's own edge.
        const QByteArray room =
            "viewBox=\"" + QByteArray::number(-width / 2) + ' ' + QByteArray::number(-width / 2) +
            ' ' + QByteArray::number(16 + width) + ' ' + QByteArray::number(16 + width) + '"';
        svg.replace("viewBox=\"0 0 16 16\"", room);
    }
    return svg;
}

/// Bounds of the ink within a drawing's square, in parts of its side; the whole square if empty.
QRectF drawnPart(const QString &name, int weight)
{
    static QHash<QPair<QString, int>, QRectF> known;
    const QPair<QString, int> key(name, weight);
    if (const auto found = known.constFind(key); found != known.constEnd()) {
        return *found;
    }
    constexpr int fine = 128;
    QRect drawn;
    if (QSvgRenderer renderer(drawing(name, weight)); renderer.isValid()) {
        QImage image(fine, fine, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        for (int y = 0; y < fine; ++y) {
            for (int x = 0; x < fine; ++x) {
                if (qAlpha(image.pixel(x, y)) >= 128) {
                    drawn |= QRect(x, y, 1, 1);
                }
            }
        }
    }
    const QRectF part = drawn.isEmpty()
                            ? QRectF(0, 0, 1, 1)
                            : QRectF(QPointF(drawn.topLeft()) / fine, QSizeF(drawn.size()) / fine);
    known.insert(key, part);
    return part;
}

} // namespace

Symbol::Symbol(QQuickItem *parent)
    : PicturedItem(parent)
{
    measure();
}

void Symbol::measure()
{
    const qreal side = std::round(m_points * sidePerPoint);
    m_drawn = drawnPart(m_name, m_weight);
    setImplicitSize(side * m_drawn.width(), side);
}

QStringList Symbol::names()
{
    QStringList names;
    const QDir folder(QStringLiteral(":/vellomar/symbols"));
    for (const QString &file : folder.entryList(QDir::Files, QDir::Name)) {
        names.append(file.chopped(4)); // .svg
    }
    return names;
}

QImage Symbol::picture(const QString &name, int pixels, int weight, const QColor &color)
{
    static QCache<QString, QImage> store(8'192); // kilobytes

    const QString key =
        QStringLiteral("%1 %2 %3 %4").arg(name).arg(pixels).arg(weight).arg(color.rgba64(), 0, 16);
    if (const QImage *known = store.object(key)) {
        return *known;
    }
    QImage image;
    if (QSvgRenderer renderer(drawing(name, weight)); renderer.isValid()) {
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        image = QImage(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
    } else if (!name.isEmpty()) {
        qWarning("no symbol is named \"%s\"", qUtf8Printable(name));
    }
    // A huge one, shown once, would push all others out of the cache.
    if (const qsizetype kilobytes = image.sizeInBytes() / 1024; kilobytes < 1'024) {
        store.insert(key, new QImage(image), std::max(1, static_cast<int>(kilobytes)));
    }
    return image;
}

PicturedItem::Picture Symbol::draw(qreal scale)
{
    const int pixels = qCeil(height() * scale);
    const QImage image = picture(m_name, pixels, m_weight, m_color);
    const qreal side = pixels / scale;
    const QPointF corner = QPointF(width(), height()) / 2 - m_drawn.center() * side;
    return {image, QRectF(corner, QSizeF(side, side))};
}
