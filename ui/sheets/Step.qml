import QtQuick
import Vellomar.Design

// One of several steps: its number on an amber disc, and what to do.
Item {
    id: root

    required property int number
    required property string text

    implicitHeight: Math.max(disc.height, words.implicitHeight)
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTranslate("Texts", "%1. %2").arg(number).arg(text)

    Surface {
        id: disc

        objectName: "disc"
        width: 22
        height: 22
        radius: 11
        fill: Theme.amberGradient

        Label {
            objectName: "numeral"
            anchors.centerIn: parent
            text: root.number
            font.pixelSize: 12
            font.weight: Font.Bold
            color: Theme.ink
            Accessible.ignored: true
        }
    }

    Paragraph {
        id: words

        objectName: "words"
        anchors.left: disc.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        y: Math.max(0, (disc.height - implicitHeight) / 2)
        words: root.text
        Accessible.ignored: true
    }
}
