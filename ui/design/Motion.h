#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

/// Durations and easing curves of all animations, and one switch that turns animations off (for
/// pictures and tests).
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

    /// The duration itself; 0 while animations are off.
    Q_INVOKABLE [[nodiscard]] int time(int milliseconds) const;

    /// How long a spring takes to come to rest, in milliseconds. response: period of the undamped
    /// spring in seconds; damping: damping ratio (1: no overshoot).
    Q_INVOKABLE static int springTime(qreal response, qreal damping);
    /// The spring's position over springTime(), as the points of an Easing.BezierSpline.
    Q_INVOKABLE static QVariantList springCurve(qreal response, qreal damping);

    /// The spring's position so many seconds after its release: 0 at first, 1 at rest, above 1
    /// while it overshoots.
    static qreal springAt(qreal response, qreal damping, qreal seconds);

Q_SIGNALS:
    void stillChanged();

private:
    bool m_still = false;
};
