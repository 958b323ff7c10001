pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// Something is under way, and nobody knows how long it takes. The light ticks go around in steps,
// which costs far fewer frames than turning; they rest when nothing is to move and when out of sight.
T.BusyIndicator {
    id: control

    // What is under way, for the screen reader; empty where a text beside it says so.
    property string name: ""

    property int step: 0
    readonly property int ticks: 8
    readonly property bool moving: running && visible && !Motion.still
                                   && control.Window.visibility !== Window.Hidden
                                   && control.Window.visibility !== Window.Minimized

    implicitWidth: 16
    implicitHeight: 16
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.Indicator
    Accessible.name: name
    Accessible.ignored: name === ""

    Timer {
        interval: 100
        repeat: true
        running: control.moving
        onTriggered: control.step = (control.step + 1) % control.ticks
    }

    contentItem: TickRing {
        objectName: "ring"
        visible: control.running
        count: control.ticks
        length: 0.46
        thickness: 0.17
        shines: index => (control.step - index + control.ticks) % control.ticks < 3
    }
}
