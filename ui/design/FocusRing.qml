import QtQuick
import Vellomar.Design

// The ring around what the keyboard is on.
Rectangle {
    required property bool shown
    property real around: 0 // radius of what it surrounds
    property real gap: 3

    anchors.fill: parent
    anchors.margins: -gap
    visible: shown
    color: "transparent"
    radius: around + gap
    border.color: Theme.amber
    border.width: 2
}
