import QtQuick
import Vellomar.Design

// One check of the protection panel; a click opens the place where it can be put right, if any.
Item {
    id: root

    required property bool ok
    required property string title
    required property string detail
    required property bool hasRemedy
    property bool hovering: button.hovered
    property bool ringed: button.visualFocus
    property real glow: hasRemedy && hovering ? 1 : 0

    signal clicked()

    Behavior on glow {
        Ease {}
    }

    implicitHeight: Math.max(symbol.height, texts.height) + 14
    Accessible.ignored: hasRemedy
    Accessible.role: Accessible.StaticText
    Accessible.name: button.spoken

    Pressable {
        id: button

        readonly property string spoken: qsTranslate("Texts", "%1: %2").arg(root.title).arg(root.detail)

        objectName: "button"
        anchors.fill: parent
        enabled: root.hasRemedy
        ringed: root.ringed
        ringRadius: 9
        ringGap: 1
        onClicked: root.clicked()

        Accessible.ignored: !root.hasRemedy
        Accessible.name: spoken

        background: Surface {
            radius: 9
            fill: Theme.flat(Theme.white(0.07))
            opacity: root.glow
        }
    }

    Symbol {
        id: symbol

        objectName: "symbol"
        anchors.verticalCenter: parent.verticalCenter
        x: 8
        name: root.ok ? "checkmark.circle.fill" : "exclamationmark.circle.fill"
        points: 15
        color: root.ok ? Theme.mint : Theme.amber
    }

    Column {
        id: texts

        readonly property real end: root.width - 8 - (root.hasRemedy ? chevron.width + 11 : 0)

        anchors.verticalCenter: parent.verticalCenter
        x: symbol.x + symbol.width + 11
        width: Math.max(0, end - x)

        OneLine {
            objectName: "title"
            width: parent.width
            line: root.title
            minimumScale: 0.85
            font.weight: Font.Medium
        }

        OneLine {
            objectName: "detail"
            width: parent.width
            line: root.detail
            minimumScale: 0.8
            font.pixelSize: 12
            color: Theme.secondary
        }
    }

    Symbol {
        id: chevron

        objectName: "chevron"
        anchors.verticalCenter: parent.verticalCenter
        x: root.width - 8 - width
        visible: root.hasRemedy
        name: "chevron.right"
        points: 10
        weight: Font.DemiBold
        color: root.hovering ? Theme.amber : Theme.white(0.3)

        Behavior on color {
            ColorAnimation {
                duration: Motion.time(150)
                easing.type: Easing.OutQuad
            }
        }
    }
}
