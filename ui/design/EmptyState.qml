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

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, Math.max(0, root.width - 72))
            text: root.title
            font.pixelSize: 17
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, 340)
            text: root.text
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
    }
}
