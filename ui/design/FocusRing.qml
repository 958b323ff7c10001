import QtQuick
import Vellomar.Design

// The ring around the control that has the focus.
Surface {
    required property bool shown
    property real around: 0 // the control's own corner radius
    property real gap: 3

    anchors.fill: parent
    anchors.margins: -gap
    visible: shown
    radius: around + gap
    rim: Theme.flat(Theme.amber)
    rimWidth: 2
}
