import QtQuick
import Vellomar.Design

// Opens and closes what stands below it. It shows `expanded` as it is given; a click, or the arrow
// to the one side or the other, asks for the change by `clicked`.
Pressable {
    id: control

    required property bool expanded
    readonly property color color: enabled && (hovering || down) ? Theme.text : Theme.label

    verticalPadding: 3
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    font.family: Theme.textFamily
    font.pixelSize: 13
    opacity: enabled ? 1 : 0.38
    ringRadius: 3

    Keys.onRightPressed: event => {
        if (!expanded) {
            press(event.isAutoRepeat);
        }
    }
    Keys.onLeftPressed: event => {
        if (expanded) {
            press(event.isAutoRepeat);
        }
    }
    // Qt 6.4 lets QML say nothing of a state "expanded"; what can be pressed in comes closest.
    Accessible.checkable: true
    Accessible.checked: expanded

    contentItem: Label {
        leftPadding: 17
        text: control.text
        font: control.font
        color: control.color
        elide: Text.ElideRight
        Accessible.ignored: true

        Symbol {
            objectName: "chevron"
            // Turned around the middle of a square, so that it stays where it is.
            x: (10 - width) / 2
            y: (parent.height - height) / 2
            name: "chevron.right"
            points: 10
            weight: Font.DemiBold
            color: control.color
            rotation: control.expanded ? 90 : 0

            Behavior on rotation {
                Ease {}
            }
        }
    }
}
