#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// Lays its children out like words, each in its implicit size, from the top leading corner. With
/// no width given they stand in one line.
class FlowLayout : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal spacing READ spacing WRITE setSpacing NOTIFY spacingChanged FINAL)

public:
    explicit FlowLayout(QQuickItem *parent = nullptr);

    [[nodiscard]] qreal spacing() const { return m_spacing; }
    void setSpacing(qreal spacing);

Q_SIGNALS:
    void spacingChanged();

protected:
    void componentComplete() override;
    void updatePolish() override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void arrange();

    qreal m_spacing = 0;
};
