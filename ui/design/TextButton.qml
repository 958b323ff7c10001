import QtQuick
import Vellomar.Design

// A button that shows only its text.
Pressable {
    id: control

    verticalPadding: 2
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    font.family: Theme.textFamily
    font.pixelSize: 13
    opacity: enabled ? 1 : 0.38
    ringRadius: 3
    ringGap: 4

    contentItem: Label {
        text: control.text
        font.family: control.font.family
        font.pixelSize: control.font.pixelSize
        font.weight: control.font.weight
        font.underline: control.enabled && control.hovering
        color: control.enabled && (control.hovering || control.down) ? Theme.text : Theme.label
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
