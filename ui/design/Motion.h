#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

/// How things move: springs as curves for an animation, and one switch that holds everything still
/// (for pictures).
class Motion : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool still READ still WRITE setStill NOTIFY stillChanged FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] bool still() const { return m_still; }
    void setStill(bool still);

    /// A length of time in milliseconds; 0 while all is still.
    Q_INVOKABLE [[nodiscard]] int time(int milliseconds) const;

    /// How long a spring takes to come to rest, in milliseconds: response is the time of one free
    /// swing in seconds, damping the fraction of what would stop it without any overshoot.
    Q_INVOKABLE static int springTime(qreal response, qreal damping);
    /// The spring's way as the points of an Easing.BezierSpline over springTime().
    Q_INVOKABLE static QVariantList springCurve(qreal response, qreal damping);

    /// Where the spring is, from 0 to 1 and beyond, at a time in seconds after it was let go.
    static qreal springAt(qreal response, qreal damping, qreal seconds);

Q_SIGNALS:
    void stillChanged();

private:
    bool m_still = false;
};
