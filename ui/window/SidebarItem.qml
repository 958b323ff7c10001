import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A section in the sidebar.
T.TabButton {
    id: control

    required property string symbol
    required property string title
    required property bool selected
    property bool hovering: hovered
    property bool ringed: visualFocus

    readonly property PressActions actions: PressActions {
        button: control
    }

    // The template sets `checked` at a click, so the binding is made again.
    checked: selected
    autoExclusive: false
    onClicked: checked = Qt.binding(() => control.selected)
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    horizontalPadding: 12
    verticalPadding: 11
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    Accessible.role: Accessible.PageTab
    Accessible.name: title
    Accessible.selectable: true
    Accessible.selected: selected

    contentItem: Row {
        spacing: 12

        Symbol {
            objectName: "symbol"
            anchors.verticalCenter: parent.verticalCenter
            width: 22
            name: control.symbol
            points: 15
            color: control.selected ? Theme.amber : Theme.white(0.85)
        }

        Label {
            objectName: "title"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(0, parent.width - 34)
            text: control.title
            font.pixelSize: 14
            font.weight: control.selected ? Font.DemiBold : Font.Normal
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }

    background: Item {
        Surface {
            objectName: "chosen"
            anchors.fill: parent
            visible: control.selected
            radius: 10
            continuous: true
            fill: Theme.panelGradient
            brightness: 0.03
            rim: Theme.rim
            rimWidth: 1
            shadowColor: Theme.black(0.3)
            shadowRadius: 8
            shadowOffset: Qt.point(0, 4)
        }

        Surface {
            objectName: "hover"
            anchors.fill: parent
            visible: !control.selected
            opacity: control.hovering ? 1 : 0
            radius: 10
            continuous: true
            fill: Theme.flat(Theme.white(0.05))

            Behavior on opacity {
                Ease {}
            }
        }

        FocusRing {
            shown: control.ringed
            around: 10
            gap: 0
        }
    }
}
