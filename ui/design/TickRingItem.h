#pragma once

#include "ui/design/PicturedItem.h"

#include <QList>
#include <QVariantAnimation>

/// A ring of ticks, some of them lit. Pages use TickRing, where a function decides which.
class TickRingItem : public PicturedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int count READ count WRITE setCount NOTIFY ringChanged FINAL)
    Q_PROPERTY(qreal length READ length WRITE setLength NOTIFY ringChanged FINAL)
    Q_PROPERTY(qreal thickness READ thickness WRITE setThickness NOTIFY ringChanged FINAL)
    Q_PROPERTY(int majorEvery READ majorEvery WRITE setMajorEvery NOTIFY ringChanged FINAL)
    /// Whether each tick is lit; those missing at the end aren't.
    Q_PROPERTY(QList<bool> lit READ lit WRITE setLit NOTIFY litChanged FINAL)
    /// Duration of the fade when ticks change, in milliseconds.
    Q_PROPERTY(int transition READ transition WRITE setTransition NOTIFY transitionChanged FINAL)

public:
    explicit TickRingItem(QQuickItem *parent = nullptr);

    [[nodiscard]] int count() const { return m_count; }
    void setCount(int count) { set(m_count, count); }
    [[nodiscard]] qreal length() const { return m_length; }
    void setLength(qreal length) { set(m_length, length); }
    [[nodiscard]] qreal thickness() const { return m_thickness; }
    void setThickness(qreal thickness) { set(m_thickness, thickness); }
    [[nodiscard]] int majorEvery() const { return m_majorEvery; }
    void setMajorEvery(int every) { set(m_majorEvery, every); }
    [[nodiscard]] QList<bool> lit() const { return m_lit; }
    void setLit(const QList<bool> &lit);
    [[nodiscard]] int transition() const { return m_fading.duration(); }
    void setTransition(int milliseconds);

Q_SIGNALS:
    void ringChanged();
    void litChanged();
    void transitionChanged();

protected:
    Picture draw(qreal scale) override;

private:
    template <typename T>
    void set(T &member, const T &value)
    {
        if (take(member, value)) {
            Q_EMIT ringChanged();
        }
    }
    /// Current brightness of a tick, from 0 to 1.
    [[nodiscard]] qreal shine(qsizetype tick) const;

    int m_count = 0;
    qreal m_length = 0;
    qreal m_thickness = 0;
    int m_majorEvery = 0;
    QList<bool> m_lit;
    QList<qreal> m_before; ///< brightness of each tick when the fade began
    qreal m_progress = 1;
    QVariantAnimation m_fading;
};
