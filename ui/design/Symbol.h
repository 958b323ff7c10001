#pragma once

#include "ui/design/PicturedItem.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <QStringList>

/// A symbol by the name of its role, in any colour, as large and heavy as text of the same size. It
/// is as wide as what is drawn of it, and that stands in the item's middle.
///
/// Symbols.cmake says which drawing stands for which role. A name that has none shows nothing, and
/// says so once in the log.
class Symbol : public PicturedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList names READ names CONSTANT FINAL)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY symbolChanged FINAL)
    /// Size of the text that it stands beside, in points.
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

    /// The names of all roles, in order.
    static QStringList names();

    /// The drawing of a role in one colour, so many pixels wide and high; null for an unknown one.
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
    QRectF
        m_drawn; ///< what is drawn of the square that the drawing is given in, as parts of its side
    int m_weight = QFont::Normal;
    QColor m_color = Qt::white;
};
