import QtQuick
import Vellomar.Design

// Something to look at, with its name below it.
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
