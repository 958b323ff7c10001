#pragma once

#include "ui/design/PicturedItem.h"
#include "ui/design/SurfacePicture.h"

/// A rounded rectangle with a gradient, a rim and a shadow; all controls are drawn with it.
class Surface : public PicturedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY styleChanged FINAL)
    Q_PROPERTY(bool continuous READ continuous WRITE setContinuous NOTIFY styleChanged FINAL)
    Q_PROPERTY(VerticalGradient fill READ fill WRITE setFill NOTIFY styleChanged FINAL)
    Q_PROPERTY(VerticalGradient rim READ rim WRITE setRim NOTIFY styleChanged FINAL)
    Q_PROPERTY(qreal rimWidth READ rimWidth WRITE setRimWidth NOTIFY styleChanged FINAL)
    Q_PROPERTY(QColor shadowColor READ shadowColor WRITE setShadowColor NOTIFY styleChanged FINAL)
    Q_PROPERTY(qreal shadowRadius READ shadowRadius WRITE setShadowRadius NOTIFY styleChanged FINAL)
    Q_PROPERTY(
        QPointF shadowOffset READ shadowOffset WRITE setShadowOffset NOTIFY styleChanged FINAL)
    /// A round part that isn't drawn because something opaque covers it: where both are
    /// translucent, the surface would shine through.
    Q_PROPERTY(QRectF hole READ hole WRITE setHole NOTIFY styleChanged FINAL)
    Q_PROPERTY(qreal brightness READ brightness WRITE setBrightness NOTIFY styleChanged FINAL)

public:
    explicit Surface(QQuickItem *parent = nullptr);

    [[nodiscard]] qreal radius() const { return m_style.radius; }
    void setRadius(qreal radius) { set(m_style.radius, radius); }
    [[nodiscard]] bool continuous() const { return m_style.continuous; }
    void setContinuous(bool continuous) { set(m_style.continuous, continuous); }
    [[nodiscard]] VerticalGradient fill() const { return m_style.fill; }
    void setFill(const VerticalGradient &fill) { set(m_style.fill, fill); }
    [[nodiscard]] VerticalGradient rim() const { return m_style.rim; }
    void setRim(const VerticalGradient &rim) { set(m_style.rim, rim); }
    [[nodiscard]] qreal rimWidth() const { return m_style.rimWidth; }
    void setRimWidth(qreal width) { set(m_style.rimWidth, width); }
    [[nodiscard]] QColor shadowColor() const { return m_style.shadow; }
    void setShadowColor(const QColor &color) { set(m_style.shadow, color); }
    [[nodiscard]] qreal shadowRadius() const { return m_style.shadowRadius; }
    void setShadowRadius(qreal radius) { set(m_style.shadowRadius, radius); }
    [[nodiscard]] QPointF shadowOffset() const { return m_style.shadowOffset; }
    void setShadowOffset(const QPointF &offset) { set(m_style.shadowOffset, offset); }
    [[nodiscard]] QRectF hole() const { return m_style.hole; }
    void setHole(const QRectF &hole) { set(m_style.hole, hole); }
    [[nodiscard]] qreal brightness() const { return m_style.brightness; }
    void setBrightness(qreal brightness) { set(m_style.brightness, brightness); }

Q_SIGNALS:
    void styleChanged();

protected:
    Picture draw(qreal scale) override;

private:
    template <typename T>
    void set(T &member, const T &value)
    {
        if (take(member, value)) {
            Q_EMIT styleChanged();
        }
    }

    SurfaceStyle m_style;
};
