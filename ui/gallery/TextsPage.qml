pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    id: page

    // All texts show the same moment.
    readonly property date now: new Date()

    title: "Texts"
    subtitle: "Formats, messages, and lines that shrink before they are elided"

    Panel {
        title: "Formats"

        Repeater {
            model: [
                ["relative", Fmt.relative(new Date(page.now - 2 * 3600 * 1000))],
                ["since", Fmt.since(new Date(page.now - 47.5 * 3600 * 1000))],
                ["duration", Fmt.duration(3723)],
                ["dateTime", Fmt.dateTime(page.now)],
                ["date", Fmt.date(page.now)],
                ["time", Fmt.time(page.now)],
                ["day", Fmt.day(new Date(page.now - 3 * 86400 * 1000))],
                ["byteCount", Fmt.byteCount(1234567)],
                ["number", Fmt.number(1234567)]
            ]

            Row {
                id: row

                required property var modelData

                Label {
                    width: 120
                    color: Theme.secondary
                    text: row.modelData[0]
                }

                Label { text: row.modelData[1] }
            }
        }
    }

    Panel {
        title: "Messages and lines"

        InlineMessage {
            width: parent.width
            text: "Kit salvato."
            symbol: "checkmark.circle"
            color: Theme.mint
        }

        InlineMessage {
            width: parent.width
            text: "Crescita trascurabile negli ultimi giorni."
            symbol: "checkmark.circle"
            signColor: Theme.mint
            color: Theme.secondary
            font.pixelSize: 12
        }

        InlineMessage {
            width: 260
            text: "Non è stato possibile salvare il kit: il disco di destinazione è pieno."
            symbol: "exclamationmark.triangle"
            color: Theme.coral
        }

        Row {
            spacing: 22

            Repeater {
                model: [300, 130, 90]

                OneLine {
                    required property int modelData

                    width: modelData
                    line: "Documenti/Fatture/2024.pdf"
                    minimumScale: 0.8
                }
            }
        }
    }
}
