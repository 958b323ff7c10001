import QtQuick
import Vellomar.Design

// A movement as of a spring let go: response is the time of one free swing in seconds, damping the
// fraction of what would stop it without overshoot.
NumberAnimation {
    required property real response
    required property real damping

    duration: Motion.time(Motion.springTime(response, damping))
    easing.type: Easing.BezierSpline
    easing.bezierCurve: Motion.springCurve(response, damping)
}
