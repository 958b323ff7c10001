#pragma once

#include "ui/design/PicturedItem.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <QStringList>

/// A symbol, named by its role, in any colour, as large and heavy as text of the same size. The
/// item is as wide as the drawing's ink.
///
/// Symbols.cmake maps roles to drawings. An unknown name shows nothing and is logged once.
class Symbol : public PicturedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList names READ names CONSTANT FINAL)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY symbolChanged FINAL)
    /// Size of the text beside it, in points.
    Q_PROPERTY(qreal points READ points WRITE setPoints NOTIFY symbolChanged FINAL)
    /// A weight as for fonts: Font.Normal, Font.DemiBold, …
    Q_PROPERTY(int weight READ weight WRITE setWeight NOTIFY symbolChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY symbolChanged FINAL)

public:
    explicit Symbol(QQuickItem *parent = nullptr);

    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString &name) { set(m_name, name); }
    [[nodiscard]] qreal points() const { return m_points; }
    void setPoints(qreal points) { set(m_points, points); }
    [[nodiscard]] int weight() const { return m_weight; }
    void setWeight(int weight) { set(m_weight, weight); }
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor &color) { set(m_color, color); }

    /// The names of all roles, sorted.
    static QStringList names();

    /// The drawing of a role in one colour, a square of so many pixels; null for an unknown role.
    static QImage picture(const QString &name, int pixels, int weight, const QColor &color);

Q_SIGNALS:
    void symbolChanged();

protected:
    Picture draw(qreal scale) override;

private:
    template <typename T>
    void set(T &member, const T &value)
    {
        if (take(member, value)) {
            measure();
            Q_EMIT symbolChanged();
        }
    }
    void measure();

    QString m_name;
    qreal m_points = 15;
    QRectF m_drawn; ///< bounds of the ink within the drawing's square, in parts of its side
    int m_weight = QFont::Normal;
    QColor m_color = Qt::white;
};
