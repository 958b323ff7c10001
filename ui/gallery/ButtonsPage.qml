pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    title: "Buttons"
    subtitle: "At rest, hovered, pressed, with the keyboard on it, disabled"

    component Kinds: Row {
        id: row

        required property int kind

        spacing: 22

        PillButton { kind: row.kind; text: "Esegui backup" }
        PillButton { kind: row.kind; text: "Esegui backup"; hovering: true }
        PillButton { kind: row.kind; text: "Esegui backup"; down: true }
        PillButton { kind: row.kind; text: "Esegui backup"; ringed: true }
        PillButton { kind: row.kind; text: "Esegui backup"; enabled: false }
    }

    Panel {
        title: "Pill buttons"

        Kinds { kind: PillButton.Kind.Primary }
        Kinds { kind: PillButton.Kind.Outline }
        Kinds { kind: PillButton.Kind.Quiet }
    }

    Panel {
        title: "Large"

        FlowLayout {
            width: parent.width
            spacing: 22

            PillButton { large: true; text: "Esegui backup ora" }
            PillButton { large: true; kind: PillButton.Kind.Outline; text: "Interrompi" }
            PillButton { large: true; enabled: false; text: "Avvio in corso..." }
        }
    }

    Panel {
        title: "Icon buttons"

        Row {
            spacing: 22

            IconButton { symbol: "xmark"; help: "Chiudi" }
            IconButton { symbol: "power"; help: "Esci da Vellomar"; hovering: true }
            IconButton { symbol: "arrow.clockwise"; help: "Aggiorna"; down: true }
            IconButton { symbol: "xmark"; help: "Chiudi"; ringed: true }
            IconButton { symbol: "xmark"; help: "Chiudi"; enabled: false }
        }
    }
}
