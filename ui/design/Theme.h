#pragma once

#include "ui/design/VerticalGradient.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// Every colour and font family of the window, and the only place that has any: a dark teal ground
/// with an amber accent.
class Theme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(QColor ground READ ground CONSTANT FINAL)
    Q_PROPERTY(QColor amber READ amber CONSTANT FINAL)
    Q_PROPERTY(QColor mint READ mint CONSTANT FINAL)
    Q_PROPERTY(QColor coral READ coral CONSTANT FINAL)
    Q_PROPERTY(QColor ink READ ink CONSTANT FINAL)
    Q_PROPERTY(QColor line READ line CONSTANT FINAL)
    Q_PROPERTY(QColor text READ text CONSTANT FINAL)
    Q_PROPERTY(QColor label READ label CONSTANT FINAL)
    Q_PROPERTY(QColor secondary READ secondary CONSTANT FINAL)
    Q_PROPERTY(QColor tertiary READ tertiary CONSTANT FINAL)

    Q_PROPERTY(VerticalGradient groundGradient READ groundGradient CONSTANT FINAL)
    Q_PROPERTY(VerticalGradient sidebarGradient READ sidebarGradient CONSTANT FINAL)
    Q_PROPERTY(VerticalGradient amberGradient READ amberGradient CONSTANT FINAL)
    Q_PROPERTY(VerticalGradient panelGradient READ panelGradient CONSTANT FINAL)
    Q_PROPERTY(VerticalGradient rim READ rim CONSTANT FINAL)
    Q_PROPERTY(VerticalGradient knobGradient READ knobGradient CONSTANT FINAL)
    Q_PROPERTY(VerticalGradient bezelGradient READ bezelGradient CONSTANT FINAL)
    Q_PROPERTY(VerticalGradient wellGradient READ wellGradient CONSTANT FINAL)

    Q_PROPERTY(QString textFamily READ textFamily CONSTANT FINAL)
    Q_PROPERTY(QString roundedFamily READ roundedFamily CONSTANT FINAL)
    Q_PROPERTY(QString monospacedFamily READ monospacedFamily CONSTANT FINAL)

public:
    static QColor ground();
    static QColor amber(); ///< the accent
    static QColor mint();  ///< what is well
    static QColor coral(); ///< what is wrong
    static QColor ink();   ///< text on amber
    static QColor line();  ///< dividers
    static QColor text();
    static QColor label();     ///< text of controls that aren't selected
    static QColor secondary(); ///< explanations
    static QColor tertiary();  ///< still fainter, such as placeholders

    static VerticalGradient groundGradient();
    static VerticalGradient sidebarGradient();
    static VerticalGradient amberGradient();
    static VerticalGradient panelGradient();
    static VerticalGradient rim(); ///< light caught by the upper edge of a panel
    static VerticalGradient knobGradient();
    static VerticalGradient bezelGradient(); ///< ground of the dial
    static VerticalGradient wellGradient();  ///< the recessed disc in it

    // The families are looked up once: that takes time, and every label asks for one.

    /// Inter, or the system's font where it isn't installed.
    static QString textFamily();
    /// The rounded font of the large digits.
    static QString roundedFamily();
    static QString monospacedFamily();

    Q_INVOKABLE static QColor white(qreal opacity);
    Q_INVOKABLE static QColor black(qreal opacity);
    Q_INVOKABLE static QColor faded(const QColor &color, qreal opacity);
    Q_INVOKABLE static VerticalGradient vertical(const QColor &top, const QColor &bottom);
    Q_INVOKABLE static VerticalGradient flat(const QColor &color);

    /// Lighter by an amount in each channel. A translucent white becomes more opaque instead, which
    /// looks the same on a dark ground.
    static QColor brightened(const QColor &color, qreal amount);
    static VerticalGradient brightened(const VerticalGradient &gradient, qreal amount);
};
