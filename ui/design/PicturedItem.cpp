#include "ui/design/PicturedItem.h"

#include <QMatrix4x4>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>
#include <QSGTexture>
#include <QSGTransformNode>
#include <QtMath>

#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

namespace {

/// The translation of a node in the scene; nothing if it is also rotated or scaled.
std::optional<QPointF> movedBy(const QSGNode *node)
{
    QMatrix4x4 matrix;
    for (; node != nullptr && node->type() != QSGNode::RootNodeType; node = node->parent()) {
        if (node->type() == QSGNode::TransformNodeType) {
            matrix = static_cast<const QSGTransformNode *>(node)->matrix() * matrix;
        }
    }
    const QPointF offset(matrix(0, 3), matrix(1, 3));
    QMatrix4x4 moved;
    moved.translate(matrix(0, 3), matrix(1, 3), matrix(2, 3));
    return matrix == moved ? std::optional(offset) : std::nullopt;
}

/// Draws one texture in up to three parts: left end, stretched column, right end.
class PictureNode : public QSGNode
{
public:
    PictureNode() { setFlag(UsePreprocess); }

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
        m_size = image.size();
    }

    /// Where the picture is drawn, in points, and the scale in pixels per point; the widths of the
    /// two ends, which aren't stretched, in pixels.
    void place(QQuickWindow *window, const QRectF &place, qreal scale, int left, int right)
    {
        m_place = place;
        m_scale = scale;
        const QRectF whole(QPointF(), m_size);
        setPart(window, 0, {0, 0, qreal(left), whole.height()});
        setPart(window, 1, {qreal(left), 0, whole.width() - left - right, whole.height()});
        setPart(window, 2, {whole.width() - right, 0, qreal(right), whole.height()});
        lay(m_place);
    }

    /// Between pixels, lines would blur and gaps open between the parts.
    void preprocess() override
    {
        const std::optional<QPointF> offset = movedBy(this);
        if (!offset) {
            lay(m_place);
            return;
        }
        // Halves are always rounded in the same direction.
        const auto snapped = [this](qreal place, qreal by) {
            return std::floor((place + by) * m_scale + 0.5 + 1e-6) / m_scale - by;
        };
        lay(QRectF(
            QPointF(snapped(m_place.left(), offset->x()), snapped(m_place.top(), offset->y())),
            QPointF(snapped(m_place.right(), offset->x()),
                    snapped(m_place.bottom(), offset->y()))));
    }

private:
    void setPart(QQuickWindow *window, std::size_t index, const QRectF &source)
    {
        QSGImageNode *&part = m_parts.at(index);
        if (source.isEmpty()) {
            delete std::exchange(part, nullptr);
            return;
        }
        if (part == nullptr) {
            part = window->createImageNode();
            part->setTexture(m_texture.get());
            part->setFiltering(QSGTexture::Linear);
            part->setFlag(OwnedByParent);
            appendChildNode(part);
        }
        part->setSourceRect(source);
    }

    void lay(const QRectF &place)
    {
        const qreal left = width(0) / m_scale;
        const qreal right = width(2) / m_scale;
        setRect(0, {place.left(), place.top(), left, place.height()});
        setRect(1,
                {place.left() + left, place.top(), place.width() - left - right, place.height()});
        setRect(2, {place.right() - right, place.top(), right, place.height()});
    }

    [[nodiscard]] qreal width(std::size_t index) const
    {
        const QSGImageNode *part = m_parts.at(index);
        return part == nullptr ? 0 : part->sourceRect().width();
    }

    void setRect(std::size_t index, const QRectF &rectangle)
    {
        // A node that hasn't moved needn't be drawn again.
        if (QSGImageNode *part = m_parts.at(index); part != nullptr && part->rect() != rectangle) {
            part->setRect(rectangle);
        }
    }

    std::array<QSGImageNode *, 3> m_parts{};
    std::unique_ptr<QSGTexture> m_texture;
    qint64 m_key = 0;
    QSize m_size;
    QRectF m_place;
    qreal m_scale = 1;
};

/// The picture with its stretched column at its final width.
QImage stretched(const QImage &image, int column, int width)
{
    const int right = image.width() - column - 1;
    QImage whole(std::max(width, image.width()), image.height(), image.format());
    QPainter painter(&whole);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, image, 0, 0, column);
    painter.drawImage(QRect(column, 0, whole.width() - column - right, whole.height()), image,
                      QRect(column, 0, 1, whole.height()));
    painter.drawImage(whole.width() - right, 0, image, column + 1, 0, right);
    return whole;
}

bool isPainted(QQuickWindow *window)
{
    return window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
}

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
    const qreal scale = window()->effectiveDevicePixelRatio();
    m_picture = width() > 0 && height() > 0 ? draw(scale) : Picture();
    // The software renderer rounds each part's position, so that scaled parts don't meet.
    if (m_picture.stretched >= 0 && !m_picture.flat && isPainted(window())) {
        m_picture.image = stretched(m_picture.image, m_picture.stretched,
                                    qRound(m_picture.place.width() * scale));
        m_picture.place.setWidth(m_picture.image.width() / scale);
        m_picture.stretched = -1;
    }
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
    const qreal scale = image.height() / m_picture.place.height();
    node->show(window(), image);
    const bool ends = m_picture.stretched >= 0 && !m_picture.flat;
    node->place(window(), m_picture.place, scale, ends ? m_picture.stretched : 0,
                ends ? image.width() - m_picture.stretched - 1 : 0);
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
