import QtQuick
import Vellomar.Design

// An animation that starts at full speed and slows down to its end.
NumberAnimation {
    property int time: 150

    duration: Motion.time(time)
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
}
