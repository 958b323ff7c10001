#include "ui/design/Surface.h"

#include <cmath>

namespace {

/// Rounds an animated value to steps too small to see, so that an animation needs few pictures and
/// the next one finds them in the cache.
qreal stepped(qreal value, qreal step)
{
    return std::round(value / step) * step;
}

} // namespace

Surface::Surface(QQuickItem *parent)
    : PicturedItem(parent)
{
}

PicturedItem::Picture Surface::draw(qreal scale)
{
    SurfaceStyle style = m_style;
    style.brightness = stepped(style.brightness, 0.01);
    style.shadowRadius = stepped(style.shadowRadius, 0.5);
    style.shadowOffset = {stepped(style.shadowOffset.x(), 0.5),
                          stepped(style.shadowOffset.y(), 0.5)};
    const SurfacePicture picture = surfacePicture(style, size(), scale);
    // Exactly the picture's size, or a line of one pixel would blur over two.
    const qreal width =
        picture.stretched < 0 ? picture.image.width() / scale : this->width() + 2 * picture.margin;
    return {picture.image,
            QRectF(-picture.margin, -picture.margin, width, picture.image.height() / scale),
            picture.stretched, picture.flat};
}
