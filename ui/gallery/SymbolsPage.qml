pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    title: "Symbols"
    subtitle: "Every role, regular and heavier"

    Symbol { id: every; visible: false }

    FlowLayout {
        width: parent.width
        spacing: 14

        Repeater {
            model: every.names

            Specimen {
                id: specimen

                required property string modelData

                name: modelData

                Row {
                    spacing: 8

                    Symbol { name: specimen.modelData; points: 20; color: Theme.amber }
                    Symbol {
                        name: specimen.modelData
                        points: 20
                        weight: Font.DemiBold
                        color: Theme.text
                    }
                    Symbol {
                        name: specimen.modelData
                        points: 12
                        weight: Font.DemiBold
                        color: Theme.text
                    }
                }
            }
        }
    }
}
