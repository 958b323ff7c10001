pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    title: "Small buttons"
    subtitle: "At rest, hovered, pressed, focused, disabled"

    Panel {
        title: "Icon and text buttons"

        Row {
            spacing: 22

            IconButton { symbol: "xmark"; help: "Chiudi" }
            IconButton { symbol: "power"; help: "Esci da Vellomar"; hovering: true }
            IconButton { symbol: "arrow.clockwise"; help: "Aggiorna"; down: true }
            IconButton { symbol: "xmark"; help: "Chiudi"; ringed: true }
            IconButton { symbol: "xmark"; help: "Chiudi"; enabled: false }
        }

        Row {
            spacing: 22

            TextButton { text: "Apri il file di log" }
            TextButton { text: "Apri il file di log"; hovering: true }
            TextButton { text: "Apri il file di log"; down: true }
            TextButton { text: "Apri il file di log"; ringed: true }
            TextButton { text: "Apri il file di log"; enabled: false }
        }
    }

    Panel {
        title: "Disclosure rows"

        FlowLayout {
            width: parent.width
            spacing: 22

            DisclosureRow { expanded: false; text: "Credenziali OAuth personali" }
            DisclosureRow { expanded: true; text: "Credenziali OAuth personali" }
            DisclosureRow { expanded: false; text: "Credenziali"; hovering: true }
            DisclosureRow { expanded: true; text: "Credenziali"; ringed: true }
            DisclosureRow { expanded: false; text: "Credenziali"; enabled: false }
        }
    }

    Panel {
        title: "Chips"

        FlowLayout {
            width: parent.width
            spacing: 8

            Repeater {
                model: ["node_modules", ".cache", "*.tmp", "Library/Caches", ".Trash", "build",
                    "/home/utente/Progetti/un percorso molto lungo/che non sta in una sola voce",
                    "venv", "DerivedData", ".DS_Store", "target"]

                Chip {
                    required property string modelData

                    text: modelData
                    help: "Rimuovi"
                }
            }
        }

        Row {
            spacing: 8

            Chip { text: "node_modules"; help: "Rimuovi"; hovering: true }
            Chip { text: "node_modules"; help: "Rimuovi"; ringed: true }
            Chip { text: "node_modules"; help: "Rimuovi"; enabled: false }
            Chip { text: "[Bozze"; help: "Rimuovi"; fault: "Esclusione non valida" }
        }
    }
}
