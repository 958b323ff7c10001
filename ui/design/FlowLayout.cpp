#include "ui/design/FlowLayout.h"

#include "ui/design/FlowArrangement.h"

#include <limits>

FlowLayout::FlowLayout(QQuickItem *parent)
    : QQuickItem(parent)
{
}

void FlowLayout::setSpacing(qreal spacing)
{
    if (m_spacing != spacing) {
        m_spacing = spacing;
        polish();
        Q_EMIT spacingChanged();
    }
}

void FlowLayout::componentComplete()
{
    QQuickItem::componentComplete();
    arrange();
}

void FlowLayout::updatePolish()
{
    arrange();
}

void FlowLayout::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.width() != before.width()) {
        polish();
    }
}

void FlowLayout::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemChildAddedChange) {
        connect(data.item, &QQuickItem::implicitWidthChanged, this, &QQuickItem::polish);
        connect(data.item, &QQuickItem::implicitHeightChanged, this, &QQuickItem::polish);
        connect(data.item, &QQuickItem::visibleChanged, this, &QQuickItem::polish);
        polish();
    } else if (change == ItemChildRemovedChange) {
        disconnect(data.item, nullptr, this, nullptr);
        polish();
    } else if (change == ItemSceneChange) {
        polish();
    }
}

void FlowLayout::arrange()
{
    QList<QQuickItem *> shown;
    QList<QSizeF> sizes;
    const QList<QQuickItem *> children = childItems();
    for (QQuickItem *child : children) {
        // A Repeater is a child too, of no size and nothing to see.
        if (child->isVisible() && child->implicitWidth() > 0 && child->implicitHeight() > 0) {
            shown.append(child);
            sizes.append({child->implicitWidth(), child->implicitHeight()});
        }
    }
    const qreal available = widthValid() ? width() : std::numeric_limits<qreal>::infinity();
    const FlowArrangement flow = flowArrangement(sizes, available, m_spacing);
    for (qsizetype i = 0; i < shown.size(); ++i) {
        shown[i]->setPosition(flow.places[i]);
        shown[i]->setSize(sizes[i]);
    }
    setImplicitSize(flow.size.width(), flow.size.height());
}
