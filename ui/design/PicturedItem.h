#pragma once

#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// An item painted into an image by QPainter, so that it looks the same with OpenGL and with the
/// software renderer.
///
/// The image is painted again only when a value that it depends on changes. It is drawn on whole
/// pixels of the screen wherever the item is, unless the item is rotated or scaled. An image with a
/// stretched column is only as wide as its two ends, however wide the item is.
class PicturedItem : public QQuickItem
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit PicturedItem(QQuickItem *parent = nullptr);

protected:
    struct Picture
    {
        QImage image;       ///< in pixels of the screen
        QRectF place;       ///< where it is drawn, in the item's coordinates; may be larger than it
        int stretched = -1; ///< the column that is stretched to fill the place; -1: none
        bool flat = false;  ///< the stretched column is the whole image
    };

    /// The picture for the current size; scale: pixels per point.
    virtual Picture draw(qreal scale) = 0;

    /// Has the picture drawn again before the next frame.
    void redraw();

    /// Sets a value that the picture depends on; true if it changed.
    template <typename T>
    bool take(T &member, const T &value)
    {
        if (member == value) {
            return false;
        }
        member = value;
        redraw();
        return true;
    }

    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    Picture m_picture;
};
