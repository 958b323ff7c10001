import QtQuick
import Vellomar.Design

// A movement that begins at full speed and comes softly to rest.
NumberAnimation {
    property int time: 150

    duration: Motion.time(time)
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
}
