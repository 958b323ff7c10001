import QtQuick
import Vellomar.Design

// How much of a place is used, as a bar and in words.
Column {
    id: root

    required property real used
    required property real total
    required property string words

    spacing: 6

    Meter {
        objectName: "meter"
        width: parent.width
        name: root.words
        fraction: root.total > 0 ? root.used / root.total : 0
    }

    OneLine {
        objectName: "words"
        width: parent.width
        line: root.words
        font.pixelSize: 12
        color: Theme.secondary
    }
}
