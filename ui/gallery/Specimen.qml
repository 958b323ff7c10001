import QtQuick
import Vellomar.Design

// An item with its name below.
Column {
    id: root

    required property string name
    default property alias content: place.data

    spacing: 8

    Item {
        id: place

        implicitWidth: childrenRect.width
        implicitHeight: childrenRect.height
    }

    Label {
        text: root.name
        font.pixelSize: 11
        color: Theme.secondary
    }
}
