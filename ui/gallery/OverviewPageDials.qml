pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared

Page {
    title: "Dials"
    subtitle: "A day with its versions, and a run; small ones have no caption"

    Repeater {
        model: ["well", "running"]

        Item {
            id: line

            required property string modelData

            implicitWidth: dials.width
            implicitHeight: 236

            PreparedModel {
                id: source

                state: line.modelData
            }

            Summary {
                id: summed

                model: source.model
            }

            Row {
                id: dials

                spacing: 40

                Repeater {
                    model: [236, 151, 150, 86]

                    TimeDial {
                        required property int modelData

                        summary: summed
                        diameter: modelData
                    }
                }
            }
        }
    }
}
