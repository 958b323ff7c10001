import QtQuick
import Vellomar.Design

// How something came out, in as many lines as it takes. The words may be a tool's own.
Item {
    id: root

    required property string text
    required property color color
    property string symbol: ""

    implicitHeight: words.implicitHeight

    Symbol {
        id: sign

        objectName: "sign"
        // Beside the first line, however many there are.
        y: (metrics.height - height) / 2
        visible: root.symbol !== ""
        name: root.symbol
        points: 14
        color: root.color
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
