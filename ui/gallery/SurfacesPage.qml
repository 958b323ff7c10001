pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    title: "Surfaces"
    subtitle: "Raised blocks, wells, meters and states"

    Row {
        spacing: 30

        Specimen {
            name: "raised"
            Raised { width: 200; height: 80 }
        }

        Specimen {
            name: "lifted"
            Raised { width: 200; height: 80; lifted: true }
        }

        Specimen {
            name: "glyph wells"
            Row {
                spacing: 12
                GlyphWell { size: 30; points: 13; symbol: "cloud" }
                GlyphWell { size: 36; symbol: "externaldrive" }
                GlyphWell { size: 44; points: 20; symbol: "server.rack" }
            }
        }
    }

    Panel {
        title: "Meters"

        Repeater {
            model: [0, 0.001, 0.35, 1]

            Meter {
                required property double modelData

                width: parent ? (parent as Item).width : 0
                fraction: modelData
            }
        }
    }

    Panel {
        title: "Metrics and states"

        Row {
            spacing: 40

            Metric { label: "Spazio usato"; value: "1,2 GB" }
            Metric { label: "Versioni"; value: "1.111" }
            Metric { label: "File"; value: "888.000" }
            StatusDot { text: "Collegato"; color: Theme.mint }
            StatusDot { text: "In corso"; color: Theme.amber }
            StatusDot { text: "Da configurare"; color: Theme.coral }
        }
    }

    Panel {
        title: "Spinners"

        Row {
            spacing: 22

            Spinner { name: "Verifica in corso..." }
            Spinner { name: "Verifica in corso..."; enabled: false }
            Spinner { width: 32; height: 32; name: "Caricamento delle versioni..." }
        }
    }
}
