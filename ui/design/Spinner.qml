pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// Shows that something is under way whose end isn't known. The lit ticks move in steps: that takes
// ten frames a second and not sixty, and none while motion is off or nobody can see it.
T.BusyIndicator {
    id: control

    // For the screen reader: what is under way. Empty where a text beside it says so.
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
