#include "ui/design/Surface.h"

#include <cmath>

namespace {

/// A value on its way between two others is shown in steps too small to see, so that the pictures
/// of one movement are few and found again by the next.
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
    // The place has the very size of the picture, or a line of one pixel would be smeared over two.
    const qreal width =
        picture.stretched < 0 ? picture.image.width() / scale : this->width() + 2 * picture.margin;
    return {picture.image,
            QRectF(-picture.margin, -picture.margin, width, picture.image.height() / scale),
            picture.stretched, picture.flat};
}
