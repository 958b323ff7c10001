#pragma once

#include "ui/design/PicturedItem.h"

/// The white two-stroke clock hand of the product's mark.
class ClockHand : public PicturedItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit ClockHand(QQuickItem *parent = nullptr);

protected:
    Picture draw(qreal scale) override;
};
