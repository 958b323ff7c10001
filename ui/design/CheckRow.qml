import QtQuick
import Vellomar.Design

// A check box with its text. A click anywhere in the row presses it.
Item {
    id: root

    required property string text
    required property bool checked

    signal asked(checked: bool)

    implicitHeight: Math.max(box.height, words.implicitHeight) + 8

    CheckBox {
        id: box

        objectName: "box"
        y: words.y + Math.max(0, (metrics.height - height) / 2)
        text: root.text
        checked: root.checked
        onAsked: checked => root.asked(checked)
    }

    FontMetrics {
        id: metrics
        font: words.font
    }

    Paragraph {
        id: words

        objectName: "words"
        anchors.left: box.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        y: 4
        words: root.text
        opacity: box.opacity
        Accessible.ignored: true
    }

    MouseArea {
        anchors.fill: parent
        onClicked: box.press(false)
    }
}
