import QtQuick
import Vellomar.Design

// A state: a coloured dot and a word, which is elided where there is less room.
Item {
    id: root

    required property string text
    required property color color

    implicitWidth: words.x + words.implicitWidth
    implicitHeight: words.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Surface {
        objectName: "dot"
        anchors.verticalCenter: parent.verticalCenter
        anchors.alignWhenCentered: false
        width: 7
        height: 7
        radius: 3.5
        fill: Theme.flat(root.color)
    }

    Label {
        id: words

        objectName: "words"
        x: 14
        width: Math.max(0, root.width - x)
        text: root.text
        font.pixelSize: 12
        color: Theme.secondary
        elide: Text.ElideRight
        maximumLineCount: 1
        Accessible.ignored: true
    }
}
