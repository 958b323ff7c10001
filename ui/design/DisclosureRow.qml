import QtQuick
import Vellomar.Design

// A row that opens and closes what is below it. It shows `expanded` as it is bound; clicked() asks
// for the change, also by the right arrow key when closed and by the left one when open.
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
    ringGap: 4

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
    // QML has no accessible state "expanded" in Qt 6.4; a button that stays pressed is closest.
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
            // Centred in a square, so that it turns in place.
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
