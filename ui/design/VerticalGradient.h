#pragma once

#include <QColor>
#include <QMetaType>
#include <QtQml/qqmlregistration.h>

/// A gradient from top to bottom; all light here comes from the top.
struct VerticalGradient
{
    Q_GADGET
    QML_VALUE_TYPE(verticalGradient)
    Q_PROPERTY(QColor top MEMBER top FINAL)
    Q_PROPERTY(QColor bottom MEMBER bottom FINAL)

public:
    QColor top = Qt::transparent;
    QColor bottom = Qt::transparent;

    friend bool operator==(const VerticalGradient &a, const VerticalGradient &b)
    {
        return a.top == b.top && a.bottom == b.bottom;
    }
    friend bool operator!=(const VerticalGradient &a, const VerticalGradient &b)
    {
        return !(a == b);
    }
};
