import QtQuick
import Vellomar.Window

// The window about the program.
Item {
    AboutView {
        anchors.centerIn: parent
        width: implicitWidth
        height: implicitHeight
        version: "1.2.3"
    }
}
