#include "ui/design/TickRingItem.h"

#include "ui/design/Theme.h"
#include "ui/design/TickRingGeometry.h"

#include <QPainter>
#include <QtMath>

TickRingItem::TickRingItem(QQuickItem *parent)
    : PicturedItem(parent)
{
    m_fading.setDuration(0);
    m_fading.setStartValue(0.0);
    m_fading.setEndValue(1.0);
    m_fading.setEasingCurve(QEasingCurve::OutQuad);
    connect(&m_fading, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_progress = value.toDouble();
        redraw();
    });
}

void TickRingItem::setLit(const QList<bool> &lit)
{
    if (m_lit == lit) {
        return;
    }
    QList<qreal> before;
    for (qsizetype i = 0; i < m_count; ++i) {
        before.append(shine(i));
    }
    m_fading.stop();
    m_before = before;
    m_lit = lit;
    m_progress = 1;
    // A ring that is shown for the first time has no fade.
    if (m_fading.duration() > 0 && isComponentComplete()) {
        m_progress = 0;
        m_fading.start();
    }
    redraw();
    Q_EMIT litChanged();
}

void TickRingItem::setTransition(int milliseconds)
{
    if (m_fading.duration() != milliseconds) {
        m_fading.setDuration(milliseconds);
        Q_EMIT transitionChanged();
    }
}

qreal TickRingItem::shine(qsizetype tick) const
{
    const qreal now = m_lit.value(tick) ? 1 : 0;
    return m_before.value(tick, now) * (1 - m_progress) + now * m_progress;
}

PicturedItem::Picture TickRingItem::draw(qreal scale)
{
    const QList<Tick> ticks = tickRing(size(), m_count, m_length, m_thickness, m_majorEvery);
    if (ticks.isEmpty()) {
        return {};
    }
    // Space for the glow of the round ends.
    const int margin = qCeil(ticks.constFirst().width * 1.4 * scale) + 1;
    QImage image(qCeil(width() * scale) + 2 * margin, qCeil(height() * scale) + 2 * margin,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin);
    painter.scale(scale, scale);
    const auto line = [&painter](const Tick &tick, const QColor &color, qreal opacity,
                                 qreal times) {
        if (opacity > 0) {
            painter.setPen(QPen(Theme::faded(color, opacity), tick.width * times, Qt::SolidLine,
                                Qt::RoundCap));
            painter.drawLine(tick.line);
        }
    };
    for (qsizetype i = 0; i < ticks.size(); ++i) {
        const qreal shining = shine(i);
        line(ticks[i], Theme::white(1), ticks[i].dim * (1 - shining), 1);
        line(ticks[i], Theme::amber(), 0.22 * shining, 2.8);
        line(ticks[i], Theme::amber(), shining, 1);
    }
    painter.end();
    const QSizeF points = QSizeF(image.size()) / scale;
    return {image, QRectF(QPointF(-margin / scale, -margin / scale), points)};
}
