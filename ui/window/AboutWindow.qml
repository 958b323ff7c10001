import QtQuick
import Vellomar.Design
import Vellomar.Window

// The panel about the program.
Window {
    id: root

    required property string version

    title: qsTranslate("Texts", "Informazioni su Vellomar")
    flags: Qt.Dialog
    width: view.implicitWidth
    height: view.implicitHeight
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: Theme.ground

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.hide()
    }

    AboutView {
        id: view

        anchors.fill: parent
        version: root.version
    }
}
