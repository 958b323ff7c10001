import QtQuick
import Vellomar.Design

Page {
    title: "Menu"
    subtitle: "Open, with a highlighted and a disabled item; a click on the button opens it again"

    PillButton {
        id: button

        kind: PillButton.Kind.Outline
        text: "Menu"
        onClicked: menu.open()

        Menu {
            id: menu

            y: button.height + 4
            title: "Menu"
            Component.onCompleted: open()
            onOpened: currentIndex = 1

            MenuItem { text: "Informazioni su Vellomar" }
            MenuItem { text: "Impostazioni..."; keys: "Ctrl+," }
            MenuSeparator {}
            MenuItem { text: "Licenze open source"; enabled: false }
            MenuItem { text: "Esci da Vellomar"; keys: "Ctrl+Q" }
        }
    }
}
