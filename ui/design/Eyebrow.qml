import QtQuick
import Vellomar.Design

// The small heading of a group.
Label {
    color: Theme.secondary
    font.pixelSize: 11
    font.weight: Font.DemiBold
    font.letterSpacing: 1.3
    font.capitalization: Font.AllUppercase
    Accessible.role: Accessible.Heading
}
