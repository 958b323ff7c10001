import QtQuick
import Vellomar.Design

// The ring around what the keyboard is on.
Surface {
    required property bool shown
    property real around: 0 // radius of what it surrounds
    property real gap: 3

    anchors.fill: parent
    anchors.margins: -gap
    visible: shown
    radius: around + gap
    rim: Theme.flat(Theme.amber)
    rimWidth: 2
}
