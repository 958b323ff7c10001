import QtQuick
import Vellomar.Design
import Vellomar.Window

// The notices of the open-source parts, in a window of their own that nobody can resize. It fetches
// the texts itself, through Notices.
Window {
    id: root

    title: qsTr("Licenze open source")
    width: 620
    height: 520
    minimumWidth: 620
    maximumWidth: 620
    minimumHeight: 520
    maximumHeight: 520
    color: Theme.ground

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.hide()
    }

    LicensesView {
        anchors.fill: parent
    }
}
