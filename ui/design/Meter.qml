import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// How much of something is used.
T.ProgressBar {
    id: control

    required property real fraction
    property string name: ""

    from: 0
    to: 1
    value: fraction >= 0 ? Math.min(1, fraction) : 0
    implicitWidth: 120
    implicitHeight: 6
    Accessible.role: Accessible.ProgressBar
    Accessible.name: name

    background: Surface {
        height: 6
        radius: 3
        fill: Theme.flat(Theme.black(0.28))
    }

    contentItem: Item {
        Surface {
            objectName: "filled"
            visible: control.value > 0
            width: Math.max(height, parent.width * control.value)
            height: 6
            radius: 3
            fill: Theme.amberGradient
        }
    }
}
