import QtQuick
import Vellomar.Design

// A small round button with a symbol; its help text is its name and its tooltip.
Pressable {
    id: control

    required property string symbol
    required property string help
    property real glow: enabled && hovering ? 1 : 0

    Behavior on glow {
        Ease { time: 100 }
    }

    ringRadius: 14
    implicitWidth: 28
    implicitHeight: 28
    opacity: enabled ? 1 : 0.38
    scale: enabled && down ? 0.97 : 1

    Behavior on scale {
        Ease {}
    }

    Accessible.name: help

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            anchors.alignWhenCentered: false
            name: control.symbol
            points: 12
            weight: Font.DemiBold
            color: Theme.text
        }
    }

    background: Surface {
        radius: 14
        fill: Theme.flat(Theme.white(0.08))
        brightness: 0.02 * control.glow
        rim: Theme.rim
        rimWidth: 1
        shadowColor: Theme.black(0.2)
        shadowRadius: 2
    }

    Tip {
        objectName: "tip"
        parent: control
        visible: control.hovered && control.help !== ""
        text: control.help
    }
}
