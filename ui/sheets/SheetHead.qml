import QtQuick
import Vellomar.Design

// The head of a sheet: title, subtitle and close button.
Item {
    id: root

    required property string title
    required property string subtitle
    property string symbol: ""
    readonly property Item closing: cross

    signal dismissed()

    implicitHeight: Math.max(texts.implicitHeight, well.visible ? well.height : 0, cross.height)

    GlyphWell {
        id: well

        objectName: "well"
        anchors.verticalCenter: texts.verticalCenter
        visible: root.symbol !== ""
        size: 44
        points: 20
        symbol: root.symbol
    }

    Column {
        id: texts

        anchors.left: well.visible ? well.right : parent.left
        anchors.leftMargin: well.visible ? 14 : 0
        anchors.right: cross.left
        anchors.rightMargin: 14
        spacing: 3

        Paragraph {
            width: parent.width
            words: root.title
            font.pixelSize: 18
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
        }

        Paragraph {
            width: parent.width
            words: root.subtitle
            color: Theme.secondary
        }
    }

    IconButton {
        id: cross

        objectName: "cross"
        anchors.right: parent.right
        symbol: "xmark"
        help: qsTranslate("Texts", "Chiudi")
        onClicked: root.dismissed()
    }
}
