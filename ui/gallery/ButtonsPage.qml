pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    title: "Buttons"
    subtitle: "At rest, hovered, pressed, focused, disabled"

    component Pill: PillButton {
        required property Kinds of

        kind: of.kind
        destructive: of.destructive
        text: of.text
    }

    component Kinds: Row {
        id: row

        required property int kind
        property bool destructive: false
        readonly property string text: destructive ? "Scollega server" : "Esegui backup"

        spacing: 22

        Pill { of: row }
        Pill { of: row; hovering: true }
        Pill { of: row; down: true }
        Pill { of: row; ringed: true }
        Pill { of: row; enabled: false }
    }

    Panel {
        title: "Pill buttons"

        Kinds { kind: PillButton.Kind.Primary }
        Kinds { kind: PillButton.Kind.Outline }
        Kinds { kind: PillButton.Kind.Quiet }
        Kinds { kind: PillButton.Kind.Outline; destructive: true }
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
}
