#pragma once

#include "ui/design/PicturedItem.h"

/// The white clock hand of the product's mark, of two strokes.
class ClockHand : public PicturedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit ClockHand(QQuickItem *parent = nullptr);

protected:
    Picture draw(qreal scale) override;
};
