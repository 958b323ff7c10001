#include "ui/design/SurfacePicture.h"

#include "ui/design/Theme.h"

#include <QCache>
#include <QDataStream>
#include <QIODevice>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

/// Where a continuous corner becomes a straight edge, in radii from the corner.
constexpr qreal continuousReach = 1.52866;

bool fitsContinuous(const QSizeF &size, qreal radius)
{
    return radius * continuousReach * 2 <= std::min(size.width(), size.height());
}

/// One box blur along lines, in place.
void boxPass(std::vector<float> &field, int lines, int length, qsizetype lineStep, qsizetype step,
             int reach)
{
    std::vector<float> line(static_cast<std::size_t>(length));
    const float share = 1.0F / static_cast<float>(2 * reach + 1);
    for (int i = 0; i < lines; ++i) {
        const auto at = [&](int place) -> float & {
            return field[static_cast<std::size_t>(i * lineStep + place * step)];
        };
        float sum = 0;
        for (int place = 0; place <= std::min(reach, length - 1); ++place) {
            sum += at(place);
        }
        for (int place = 0; place < length; ++place) {
            line[static_cast<std::size_t>(place)] = sum * share;
            if (place + reach + 1 < length) {
                sum += at(place + reach + 1);
            }
            if (place - reach >= 0) {
                sum -= at(place - reach);
            }
        }
        for (int place = 0; place < length; ++place) {
            at(place) = line[static_cast<std::size_t>(place)];
        }
    }
}

/// The shape as a blurred shadow of one colour: three box blurs are nearly a Gaussian.
QImage shadowImage(const QPainterPath &shape, const QSize &size, const QColor &color, qreal blur)
{
    QImage mask(size, QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(shape, Qt::white);
    }
    const int width = size.width();
    const int height = size.height();
    std::vector<float> field(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    auto level = field.begin();
    for (int y = 0; y < height; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(mask.constScanLine(y));
        for (int x = 0; x < width; ++x) {
            *level++ = static_cast<float>(qAlpha(row[x]));
        }
    }
    const int reach = qRound((std::sqrt(4 * blur * blur + 1) - 1) / 2);
    for (int pass = 0; pass < 3 && reach > 0; ++pass) {
        boxPass(field, height, width, width, 1, reach);
        boxPass(field, width, height, 1, width, reach);
    }
    level = field.begin();
    for (int y = 0; y < height; ++y) {
        auto *row = reinterpret_cast<QRgb *>(mask.scanLine(y));
        for (int x = 0; x < width; ++x) {
            row[x] = qPremultiply(
                qRgba(color.red(), color.green(), color.blue(), qRound(*level++ * color.alphaF())));
        }
    }
    return mask;
}

QLinearGradient brush(const VerticalGradient &gradient, const QRectF &rectangle)
{
    QLinearGradient result(rectangle.topLeft(), rectangle.bottomLeft());
    result.setColorAt(0, gradient.top);
    result.setColorAt(1, gradient.bottom);
    return result;
}

bool visible(const VerticalGradient &gradient)
{
    return gradient.top.alpha() != 0 || gradient.bottom.alpha() != 0;
}

QImage paint(const SurfaceStyle &style, const QSizeF &size, qreal scale, int margin)
{
    const QSize pixels(qRound(size.width() * scale) + 2 * margin,
                       qRound(size.height() * scale) + 2 * margin);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QRectF body(margin, margin, pixels.width() - 2 * margin, pixels.height() - 2 * margin);
    const QPainterPath shape = surfacePath(body, style.radius * scale, style.continuous);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (style.shadow.alpha() != 0) {
        painter.drawImage(0, 0,
                          shadowImage(shape.translated(style.shadowOffset * scale), pixels,
                                      style.shadow, style.shadowRadius * scale));
        // The shadow doesn't darken the translucent surface that casts it.
        painter.save();
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.fillPath(shape, Qt::black);
        painter.restore();
    }
    if (visible(style.fill)) {
        painter.fillPath(shape, brush(Theme::brightened(style.fill, style.brightness), body));
    }
    if (style.rimWidth > 0 && visible(style.rim)) {
        // At least one pixel, or it would be a faint blur.
        const qreal width = std::max(style.rimWidth * scale, 1.0);
        const qreal inset = width / 2;
        const QRectF middle = body.adjusted(inset, inset, -inset, -inset);
        VerticalGradient rim = style.rim;
        const qreal thinning = style.rimWidth * scale / width;
        rim.top = Theme::faded(rim.top, rim.top.alphaF() * thinning);
        rim.bottom = Theme::faded(rim.bottom, rim.bottom.alphaF() * thinning);
        painter.setPen(QPen(brush(rim, body), width));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(
            surfacePath(middle, std::max(0.0, style.radius * scale - inset), style.continuous));
    }
    if (!style.hole.isEmpty()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.drawEllipse(
            QRectF(style.hole.topLeft() * scale + body.topLeft(), style.hole.size() * scale));
    }
    return image;
}

/// All that the painted picture depends on.
QByteArray key(const SurfaceStyle &style, const QSizeF &size, qreal scale)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << style.radius << style.continuous << style.fill.top << style.fill.bottom
           << style.rim.top << style.rim.bottom << style.rimWidth << style.shadow
           << style.shadowRadius << style.shadowOffset << style.brightness << style.hole << size
           << scale;
    return bytes;
}

} // namespace

QPainterPath surfacePath(const QRectF &rectangle, qreal radius, bool continuous)
{
    QPainterPath path;
    const qreal most = std::min(rectangle.width(), rectangle.height()) / 2;
    if (!continuous || !fitsContinuous(rectangle.size(), radius)) {
        path.addRoundedRect(rectangle, std::min(radius, most), std::min(radius, most));
        return path;
    }
    // One corner, as distances from it along both edges in radii; the others mirror it.
    const auto corner = [&](const QPointF &tip, qreal across, qreal down, bool reversed) {
        const auto at = [&](qreal x, qreal y) {
            return tip + QPointF((reversed ? y : x) * radius * across,
                                 (reversed ? x : y) * radius * down);
        };
        path.lineTo(at(continuousReach, 0));
        path.cubicTo(at(1.08849, 0), at(0.86841, 0), at(0.63149, 0.07491));
        path.cubicTo(at(0.37282, 0.16906), at(0.16906, 0.37282), at(0.07491, 0.63149));
        path.cubicTo(at(0, 0.86841), at(0, 1.08849), at(0, continuousReach));
    };
    path.moveTo(rectangle.topLeft() + QPointF(radius * continuousReach, 0));
    corner(rectangle.topRight(), -1, 1, false);
    corner(rectangle.bottomRight(), -1, -1, true);
    corner(rectangle.bottomLeft(), 1, -1, false);
    corner(rectangle.topLeft(), 1, 1, true);
    path.closeSubpath();
    return path;
}

SurfacePicture surfacePicture(const SurfaceStyle &style, const QSizeF &size, qreal scale)
{
    static QCache<QByteArray, SurfacePicture> store(16'384); // kilobytes

    const qreal reach = style.shadow.alpha() == 0
                            ? 0
                            : style.shadowRadius * 3 + std::max(std::abs(style.shadowOffset.x()),
                                                                std::abs(style.shadowOffset.y()));
    // Between its two ends, all columns of a surface are equal.
    const qreal corner = std::min(style.radius, std::min(size.width(), size.height()) / 2) *
                         (style.continuous ? continuousReach : 1);
    const qreal end = std::ceil(corner + reach + std::abs(style.shadowOffset.x())) + 1;
    const bool flat = corner == 0 && reach == 0 && style.rimWidth == 0;
    const int margin = flat ? 0 : qCeil(reach * scale) + 1;
    const bool narrow = style.hole.isEmpty() && size.width() > 2 * end + 4;
    const qreal width = flat ? 1 / scale : narrow ? 2 * end + 3 : size.width();
    const QSizeF painted(width, size.height());

    const QByteArray wanted = key(style, painted, scale);
    if (const SurfacePicture *known = store.object(wanted)) {
        return *known;
    }
    auto picture = std::make_unique<SurfacePicture>();
    picture->image = paint(style, painted, scale, margin);
    picture->margin = margin / scale;
    picture->stretched = flat || narrow ? picture->image.width() / 2 : -1;
    picture->flat = flat;
    SurfacePicture result = *picture;
    store.insert(wanted, picture.release(),
                 std::max(1, static_cast<int>(result.image.sizeInBytes() / 1024)));
    return result;
}
