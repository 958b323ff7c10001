#pragma once

#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// An item that shows a picture painted by us, so that it looks the same on the graphics processor
/// and on the software renderer.
///
/// The picture is painted when something about it changes and then only put on the screen, its
/// pixels on those of the screen wherever the item stands, unless something turns or scales the
/// item. One that has a column to be stretched is as narrow as its ends need, however wide the item
/// is.
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
        QRectF place;       ///< where it goes, in the item's own lengths; may reach beyond it
        int stretched = -1; ///< the column that is drawn as wide as the place asks; -1: none
        bool flat = false;  ///< the stretched column is all there is to see
    };

    /// The picture for the present size at so many pixels a point.
    virtual Picture draw(qreal scale) = 0;

    /// Has the picture drawn anew before the next frame.
    void redraw();

    /// Takes a value that the picture depends on; whether it is another one.
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
