import QtQuick
import Vellomar.Design

// A dark disc with a symbol, or with its child items, on it.
Surface {
    id: root

    property real size: 36
    property string symbol: ""
    property real points: 15
    property color color: Theme.amber

    implicitWidth: size
    implicitHeight: size
    radius: size / 2
    fill: Theme.flat(Theme.black(0.25))
    brightness: 0.03
    rim: Theme.rim
    rimWidth: 1
    shadowColor: Theme.black(0.2)
    shadowRadius: 2
    shadowOffset: Qt.point(0, 1)

    Symbol {
        anchors.centerIn: parent
        anchors.alignWhenCentered: false
        visible: name !== ""
        name: root.symbol
        points: root.points
        color: root.color
    }
}
