import QtQuick
import Vellomar.Design

// A block that looks raised from the ground, and higher when lifted.
Surface {
    id: root

    property bool lifted: false
    property real lift: lifted ? 1 : 0

    Behavior on lift {
        Ease {}
    }

    radius: 14
    continuous: true
    fill: Theme.panelGradient
    rim: Theme.rim
    rimWidth: 1
    brightness: 0.06 * lift
    shadowColor: Theme.black(0.26)
    shadowRadius: 12 + 6 * lift
    shadowOffset: Qt.point(0, 6 + 4 * lift)
}
