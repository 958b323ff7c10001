import QtQuick
import Vellomar.Design
import Vellomar.Window

// The notices of the open-source parts, in a window of fixed size (smaller on a smaller screen). It
// reads the texts itself, through Notices.
Window {
    id: root

    title: qsTranslate("Texts", "Licenze open source")
    width: Math.min(620, Screen.width)
    height: Math.min(520, Screen.height)
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: Theme.ground

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.hide()
    }

    LicensesView {
        anchors.fill: parent
    }
}
