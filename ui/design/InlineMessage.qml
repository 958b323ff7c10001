import QtQuick
import Vellomar.Design

// A message within a page or sheet: a coloured text of any length, with an optional symbol. The
// text may come from a tool.
Item {
    id: root

    required property string text
    required property color color
    property string symbol: ""
    property color signColor: color // of the symbol
    property alias font: words.font

    implicitHeight: words.implicitHeight

    Symbol {
        id: sign

        objectName: "sign"
        // beside the first line
        y: (metrics.height - height) / 2
        visible: root.symbol !== ""
        name: root.symbol
        points: root.font.pixelSize + 1
        color: root.signColor
    }

    FontMetrics {
        id: metrics
        font: words.font
    }

    Paragraph {
        id: words

        objectName: "words"
        anchors.left: parent.left
        anchors.leftMargin: sign.visible ? sign.width + 9 : 0
        anchors.right: parent.right
        words: root.text
        color: root.color
        Accessible.role: Accessible.AlertMessage
    }
}
