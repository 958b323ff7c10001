import QtQuick
import Vellomar.Design

// What a page or panel shows while there is nothing to show. Where it is narrow, the padding at its
// sides shrinks first.
Item {
    id: root

    required property string symbol
    required property string title
    required property string text

    readonly property real room: Math.max(0, width - Math.max(16, Math.min(72, width - 260)))

    implicitWidth: Math.ceil(Math.max(titleMetrics.advanceWidth,
                                      Math.min(340, textMetrics.advanceWidth))) + 72
    implicitHeight: column.implicitHeight + 72
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    TextMetrics {
        id: titleMetrics

        font: heading.font
        text: root.title
    }

    TextMetrics {
        id: textMetrics

        font: body.font
        text: root.text
    }

    Column {
        id: column

        anchors.centerIn: parent
        spacing: 10

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.symbol
            points: 40
            weight: Font.Light
            color: Theme.secondary
        }

        Paragraph {
            id: heading

            objectName: "title"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, room)
            room: root.room
            words: root.title
            font.pixelSize: 17
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
        }

        Paragraph {
            id: body

            objectName: "text"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, room)
            room: Math.min(340, root.room)
            words: root.text
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
