pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    title: "Empty states"
    subtitle: "With plenty of room, and in narrow windows"

    Panel {
        EmptyState {
            width: parent.width
            symbol: "clock.arrow.circlepath"
            title: "Nessun backup eseguito"
            text: "L'elenco si riempie dopo il primo backup, e ogni riga racconta com'è andata."
        }
    }

    Row {
        spacing: 16

        Repeater {
            model: [300, 200, 120]

            Raised {
                id: block

                required property int modelData

                width: modelData
                height: empty.height

                EmptyState {
                    id: empty

                    width: block.width
                    symbol: "folder"
                    title: "Nessuna cartella"
                    text: "Aggiungi le cartelle da salvare."
                }
            }
        }
    }
}
