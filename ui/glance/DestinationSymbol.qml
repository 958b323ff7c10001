import QtQuick
import Vellomar.Design
import Vellomar.Glance

// The sign of a destination in its round well.
GlyphWell {
    id: root

    required property int destination // a value of AppModel.Destination

    symbol: {
        switch (root.destination) {
        case AppModel.Destination.Drive:
            return "cloud";
        case AppModel.Destination.Server:
            return "server.rack";
        default:
            return "externaldrive";
        }
    }
}
