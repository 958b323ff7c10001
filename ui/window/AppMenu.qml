import QtQuick
import Vellomar.Window

// What the program offers beside its pages.
PopMenu {
    id: root

    signal aboutAsked
    signal settingsAsked
    signal licensesAsked
    signal quitAsked

    title: qsTr("Menu")

    PopMenuItem {
        text: qsTr("Informazioni su Vellomar")
        onTriggered: root.aboutAsked()
    }

    PopMenuLine {}

    PopMenuItem {
        text: qsTr("Impostazioni...")
        keys: "Ctrl+,"
        onTriggered: root.settingsAsked()
    }

    PopMenuLine {}

    PopMenuItem {
        text: qsTr("Licenze open source")
        onTriggered: root.licensesAsked()
    }

    PopMenuLine {}

    PopMenuItem {
        text: qsTr("Esci da Vellomar")
        keys: "Ctrl+Q"
        onTriggered: root.quitAsked()
    }
}
