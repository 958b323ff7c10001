pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    id: page

    readonly property var many: Array.from({length: 10000}, (_, i) => ({value: i,
                                                                       label: "Versione " + i}))

    title: "Combos"
    subtitle: "At rest, hovered, focused, disabled, with no selection, open with 10,000 entries"

    Component.onCompleted: open.press(false)

    Panel {
        title: "Combos"

        FlowLayout {
            width: parent.width
            spacing: 16

            Combo { name: "Versione"; options: page.many; selection: 12 }
            Combo { name: "Versione"; options: page.many; selection: 12; hovering: true }
            Combo { name: "Versione"; options: page.many; selection: 12; ringed: true }
            Combo { name: "Versione"; options: page.many; selection: 12; enabled: false }
            Combo { name: "Versione"; options: page.many; selection: -1 }
        }

        Combo {
            id: open

            width: 300
            name: "Versione"
            options: page.many
            selection: 5000
            onChosen: value => selection = value
        }
    }
}
