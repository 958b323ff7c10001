#pragma once

#include <QColor>
#include <QImage>
#include <QObject>

class QQuickItem;

/// What can be seen of an item, at any scale of the screen. QML tests know it as the singleton Eye
/// of Vellomar.Testing.
class Eye : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Takes in the window that the item is in, as it is now.
    Q_INVOKABLE void look(QQuickItem *item);
    /// The colour that was seen at a place of the item, in the item's own lengths; none where there
    /// was nothing to see.
    Q_INVOKABLE [[nodiscard]] QColor at(QQuickItem *item, qreal x, qreal y) const;

private:
    QImage m_seen;
};
