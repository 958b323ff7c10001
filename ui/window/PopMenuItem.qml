import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// An entry of a menu, with the keys that do the same.
T.MenuItem {
    id: control

    property string keys: ""

    // A click by what the template doesn't hear: Return, once however long it is held, and the
    // screen reader.
    function press(repeated: bool) {
        if (enabled && !repeated) {
            clicked();
        }
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 10
    verticalPadding: 6
    font.family: Theme.textFamily
    font.pixelSize: 13

    Keys.onReturnPressed: event => control.press(event.isAutoRepeat)
    Keys.onEnterPressed: event => control.press(event.isAutoRepeat)
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.description: keys
    Accessible.onPressAction: control.press(false)

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
