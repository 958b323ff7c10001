#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QQuickItem>
#include <QRect>
#include <QtQml/qqmlregistration.h>

/// What can be seen of an item, at any scale of the screen: look() takes a picture of its window,
/// which the others read.
class Eye : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Takes in the window that the item is in, as it is now.
    Q_INVOKABLE void look(QQuickItem *item);
    /// The colour that was seen at a place of the item, in the item's own lengths; none where there
    /// was nothing to see.
    Q_INVOKABLE [[nodiscard]] QColor at(QQuickItem *item, qreal x, qreal y) const;

    // The following speak of pixels as they were seen, of differences as the largest one in any
    // channel from 0 to 255.

    /// The box of pixels around all in a part of the window that isn't of the ground's colour; the
    /// part is given in points, by an item's own lengths.
    Q_INVOKABLE [[nodiscard]] QRect inked(QQuickItem *item, const QRectF &part,
                                          const QColor &ground) const;
    /// How much a box differs from its own mirror image.
    Q_INVOKABLE [[nodiscard]] int sidesDiffer(const QRect &box) const;
    /// How much it differs from itself upside down.
    Q_INVOKABLE [[nodiscard]] int halvesDiffer(const QRect &box) const;
    /// How much a pixel in it differs from the first one of its row.
    Q_INVOKABLE [[nodiscard]] int rowsDiffer(const QRect &box) const;
    /// The colour of one pixel.
    Q_INVOKABLE [[nodiscard]] QColor pixel(int x, int y) const;

private:
    [[nodiscard]] int difference(QPoint one, QPoint other) const;
    /// Pixels a point; not every renderer's picture says it.
    [[nodiscard]] qreal scale(const QQuickItem *item) const;

    QImage m_seen;
};
