import QtQuick
import Vellomar.Design

// The ordinary button, in three kinds.
Pressable {
    id: control

    enum Kind { Primary, Outline, Quiet }

    property int kind: PillButton.Kind.Primary
    property bool large: false
    property bool destructive: false // takes something away that doesn't come back; not for Primary

    // Strength of the hovered look, from 0 to 1.
    property real glow: enabled && hovering ? 1 : 0

    Behavior on glow {
        Ease { time: 100 }
    }

    ringRadius: height / 2
    horizontalPadding: large ? 34 : 16
    verticalPadding: large ? 15 : 8
    implicitWidth: Math.max(large ? 270 : 0, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    font.family: Theme.textFamily
    font.pixelSize: large ? 16 : 13
    font.weight: Font.DemiBold
    opacity: enabled ? 1 : 0.38
    scale: !enabled ? 1 : down ? 0.97 : hovering ? 1.025 : 1

    Behavior on scale {
        Ease {}
    }

    contentItem: Label {
        text: control.text
        font: control.font
        color: control.kind === PillButton.Kind.Primary ? Theme.ink
             : control.destructive ? Theme.coral : Theme.label
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    background: Item {
        Surface {
            anchors.fill: parent
            visible: control.kind === PillButton.Kind.Primary
            radius: height / 2
            fill: Theme.amberGradient
            rim: Theme.vertical(Theme.white(0.55), Theme.white(0))
            rimWidth: 0.5
            brightness: 0.05 * control.glow
            shadowColor: Theme.black(0.32)
            shadowRadius: 8
            shadowOffset: Qt.point(0, 3)
        }

        Surface {
            anchors.fill: parent
            visible: control.kind === PillButton.Kind.Outline
            radius: height / 2
            fill: Theme.flat(Theme.white(0.08))
            rim: Theme.vertical(Theme.white(0.32), Theme.rim.bottom)
            rimWidth: 0.6
            brightness: 0.02 * (1 + control.glow)
            shadowColor: Theme.black(0.2)
            shadowRadius: 2
        }

        Surface {
            anchors.fill: parent
            visible: control.kind === PillButton.Kind.Quiet
            opacity: control.glow
            radius: height / 2
            fill: Theme.flat(Theme.white(0.08))
        }
    }
}
