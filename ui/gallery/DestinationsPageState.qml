import QtQuick
import Vellomar.Destinations
import Vellomar.Prepared

// The page of the destinations in one of the prepared states.
Item {
    id: root

    required property string prepared
    property real scrolled: 0 // how far down, from 0 to 1

    PreparedModel {
        id: source

        state: root.prepared
    }

    DestinationsPage {
        anchors.fill: parent
        contentY: root.scrolled * Math.max(0, contentHeight - height)
        model: source.model
    }
}
