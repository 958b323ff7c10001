import QtQuick
import Vellomar.Design
import Vellomar.Glance

// A destination in the tray's panel.
Item {
    id: root

    required property destinationState destination

    implicitHeight: Math.max(30, texts.height) + 18
    Accessible.role: Accessible.Grouping
    Accessible.name: destination.title

    Raised {
        anchors.fill: parent
    }

    DestinationSymbol {
        id: well

        objectName: "well"
        x: 11
        anchors.verticalCenter: parent.verticalCenter
        size: 30
        points: 13
        destination: root.destination.id
    }

    Column {
        id: texts

        anchors.left: well.right
        anchors.leftMargin: 11
        anchors.right: parent.right
        anchors.rightMargin: 11
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            objectName: "title"
            width: parent.width
            text: root.destination.title
            font.pixelSize: 12
            font.weight: Font.DemiBold
            elide: Text.ElideRight
        }

        ToneDot {
            objectName: "state"
            width: parent.width
            text: root.destination.stateText
            tone: root.destination.stateTone
        }
    }
}
