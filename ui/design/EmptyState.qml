import QtQuick
import Vellomar.Design

// What a page or panel shows while there is nothing to show.
Item {
    id: root

    required property string symbol
    required property string title
    required property string text

    implicitWidth: column.implicitWidth + 72
    implicitHeight: column.implicitHeight + 72
    Accessible.role: Accessible.Grouping
    Accessible.name: title

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
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, room)
            room: Math.max(0, root.width - 72)
            words: root.title
            font.pixelSize: 17
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
        }

        Paragraph {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, room)
            room: Math.max(0, Math.min(340, root.width - 72))
            words: root.text
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
