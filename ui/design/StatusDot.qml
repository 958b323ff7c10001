import QtQuick
import Vellomar.Design

// A state in a word, with its colour.
Row {
    id: root

    required property string text
    required property color color

    spacing: 7
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 7
        height: 7
        radius: 3.5
        color: root.color
    }

    Label {
        text: root.text
        width: root.width > 0 ? Math.min(implicitWidth, Math.max(0, root.width - 14)) : implicitWidth
        font.pixelSize: 12
        color: Theme.secondary
        elide: Text.ElideRight
        maximumLineCount: 1
        Accessible.ignored: true
    }
}
