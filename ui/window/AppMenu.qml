import QtQuick
import Vellomar.Window

// What the program offers beside its pages.
PopMenu {
    id: root

    signal aboutAsked
    signal settingsAsked
    signal licensesAsked
    signal quitAsked

    title: qsTranslate("Texts", "Menu")

    PopMenuItem {
        text: qsTranslate("Texts", "Informazioni su Vellomar")
        onTriggered: root.aboutAsked()
    }

    PopMenuLine {}

    PopMenuItem {
        text: qsTranslate("Texts", "Impostazioni...")
        keys: "Ctrl+,"
        onTriggered: root.settingsAsked()
    }

    PopMenuLine {}

    PopMenuItem {
        text: qsTranslate("Texts", "Licenze open source")
        onTriggered: root.licensesAsked()
    }

    PopMenuLine {}

    PopMenuItem {
        text: qsTranslate("Texts", "Esci da Vellomar")
        keys: "Ctrl+Q"
        onTriggered: root.quitAsked()
    }
}
