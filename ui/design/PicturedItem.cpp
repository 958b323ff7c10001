#include "ui/design/PicturedItem.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

#include <array>
#include <memory>
#include <utility>

namespace {

/// One texture in up to three parts: left end, stretched column, right end.
class PictureNode : public QSGNode
{
public:
    void show(QQuickWindow *window, const QImage &image)
    {
        if (m_texture && m_key == image.cacheKey()) {
            return;
        }
        std::unique_ptr<QSGTexture> texture(window->createTextureFromImage(
            image, {QQuickWindow::TextureHasAlphaChannel, QQuickWindow::TextureCanUseAtlas}));
        for (QSGImageNode *part : m_parts) {
            if (part != nullptr) {
                part->setTexture(texture.get());
            }
        }
        m_texture = std::move(texture);
        m_key = image.cacheKey();
    }

    void place(QQuickWindow *window, std::size_t index, const QRectF &target, const QRectF &source)
    {
        QSGImageNode *&part = m_parts.at(index);
        if (part == nullptr) {
            part = window->createImageNode();
            part->setTexture(m_texture.get());
            part->setFiltering(QSGTexture::Linear);
            part->setFlag(OwnedByParent);
            appendChildNode(part);
        }
        part->setRect(target);
        part->setSourceRect(source);
    }

    void remove(std::size_t index) { delete std::exchange(m_parts.at(index), nullptr); }

private:
    std::array<QSGImageNode *, 3> m_parts{};
    std::unique_ptr<QSGTexture> m_texture;
    qint64 m_key = 0;
};

} // namespace

PicturedItem::PicturedItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PicturedItem::redraw()
{
    polish();
}

void PicturedItem::updatePolish()
{
    if (window() == nullptr) {
        return;
    }
    m_picture =
        width() > 0 && height() > 0 ? draw(window()->effectiveDevicePixelRatio()) : Picture();
    update();
}

QSGNode *PicturedItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData * /*data*/)
{
    if (m_picture.image.isNull()) {
        delete old;
        return nullptr;
    }
    auto *node = old != nullptr ? static_cast<PictureNode *>(old) : new PictureNode;
    const QImage &image = m_picture.image;
    const QRectF &place = m_picture.place;
    node->show(window(), image);

    const QRectF whole(0, 0, image.width(), image.height());
    if (m_picture.stretched < 0) {
        node->place(window(), 0, place, whole);
        node->remove(1);
        node->remove(2);
        return node;
    }
    const qreal scale = image.height() / place.height();
    const qreal left = m_picture.stretched;
    const qreal right = whole.width() - left - 1;
    node->place(window(), 0, {place.left(), place.top(), left / scale, place.height()},
                {0, 0, left, whole.height()});
    node->place(window(), 1,
                {place.left() + left / scale, place.top(), place.width() - (left + right) / scale,
                 place.height()},
                {left, 0, 1, whole.height()});
    node->place(window(), 2,
                {place.right() - right / scale, place.top(), right / scale, place.height()},
                {left + 1, 0, right, whole.height()});
    return node;
}

void PicturedItem::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        redraw();
    }
}

void PicturedItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        redraw();
    }
}
