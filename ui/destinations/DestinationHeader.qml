import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Glance

// Which destination a panel is about, and whether it is in use.
Item {
    id: root

    required property place place

    // The user wants it in use, or not.
    signal asked(enabled: bool)

    implicitHeight: Math.max(well.height, texts.height)

    DestinationSymbol {
        id: well

        objectName: "well"
        anchors.verticalCenter: parent.verticalCenter
        destination: root.place.id
        size: 44
        points: 20
    }

    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        x: well.width + 14
        width: Math.max(0, toggle.x - 14 - x)
        spacing: 3

        OneLine {
            objectName: "title"
            width: parent.width
            line: root.place.title
            font.pixelSize: 17
            font.weight: Font.DemiBold
            Accessible.ignored: false
            Accessible.role: Accessible.Heading
        }

        OneLine {
            objectName: "subtitle"
            width: parent.width
            line: root.place.subtitle
            font.pixelSize: 12
            color: Theme.secondary
            elide: Text.ElideMiddle
            Accessible.ignored: false
        }
    }

    Switch {
        id: toggle

        objectName: "toggle"
        anchors.verticalCenter: parent.verticalCenter
        x: parent.width - width
        text: root.place.title
        // What is in use can be switched off, also when its account is gone.
        enabled: root.place.canEnable || root.place.enabled
        checked: root.place.enabled
        onAsked: checked => root.asked(checked)
    }
}
