import QtQuick
import Vellomar.Design
import Vellomar.Glance

// The symbol of a destination in its round well.
GlyphWell {
    id: root

    required property int destination // a value of DestinationID

    symbol: {
        switch (root.destination) {
        case DestinationID.Drive:
            return "cloud";
        case DestinationID.Server:
            return "server.rack";
        default:
            return "externaldrive";
        }
    }
}
