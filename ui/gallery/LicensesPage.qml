import QtQuick
import Vellomar.Window

// The window of the open-source notices.
Item {
    LicensesView {
        anchors.centerIn: parent
        width: 620
        height: 520
    }
}
