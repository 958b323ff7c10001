import QtQuick
import Vellomar.Design

// The program's menu.
Menu {
    id: root

    signal aboutAsked
    signal settingsAsked
    signal licensesAsked
    signal quitAsked

    title: qsTranslate("Texts", "Menu")

    MenuItem {
        text: qsTranslate("Texts", "Informazioni su Vellomar")
        onTriggered: root.aboutAsked()
    }

    MenuSeparator {}

    MenuItem {
        text: qsTranslate("Texts", "Impostazioni...")
        keys: "Ctrl+,"
        onTriggered: root.settingsAsked()
    }

    MenuSeparator {}

    MenuItem {
        text: qsTranslate("Texts", "Licenze open source")
        onTriggered: root.licensesAsked()
    }

    MenuSeparator {}

    MenuItem {
        text: qsTranslate("Texts", "Esci da Vellomar")
        keys: "Ctrl+Q"
        onTriggered: root.quitAsked()
    }
}
