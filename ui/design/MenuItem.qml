import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// An item of a menu, with the keyboard shortcut that does the same.
T.MenuItem {
    id: control

    property string keys: ""

    readonly property PressActions actions: PressActions {
        button: control
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 10
    verticalPadding: 6
    font.family: Theme.textFamily
    font.pixelSize: 13
    opacity: enabled ? 1 : 0.38

    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.description: keys

    contentItem: Label {
        rightPadding: hint.visible ? hint.width + 24 : 0
        text: control.text
        font: control.font
        color: control.highlighted ? Theme.ink : Theme.text
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    Label {
        id: hint

        anchors.right: parent.right
        anchors.rightMargin: control.rightPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: text !== ""
        text: control.keys
        font: control.font
        color: control.highlighted ? Theme.ink : Theme.secondary
        Accessible.ignored: true
    }

    background: Surface {
        visible: control.highlighted
        radius: 6
        fill: Theme.amberGradient
    }
}
