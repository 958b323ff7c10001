import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Prepared

// The page of the destinations on a window large enough for all of it.
Item {
    id: root

    readonly property PreparedModel prepared: source
    readonly property Component page: Component {
        DestinationsPage {
            width: root.width
            height: root.height
            model: source.model
        }
    }

    width: 760
    height: 1800

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    PreparedModel { id: source }
}
