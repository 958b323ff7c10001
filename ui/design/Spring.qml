import QtQuick
import Vellomar.Design

// An animation that moves as a spring: response is the period of the undamped spring in seconds,
// damping the damping ratio (1: no overshoot).
NumberAnimation {
    required property real response
    required property real damping

    duration: Motion.time(Motion.springTime(response, damping))
    easing.type: Easing.BezierSpline
    easing.bezierCurve: Motion.springCurve(response, damping)
}
