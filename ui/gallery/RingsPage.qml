pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    title: "Rings"
    subtitle: "Tick rings and the product's mark"

    Row {
        spacing: 30

        Repeater {
            model: [0, 0.4, 1]

            TickRing {
                required property double modelData

                width: 200
                height: 200
                count: 48
                length: 0.17
                thickness: 0.028
                majorEvery: 12
                shines: index => index / 48 < modelData
            }
        }
    }

    Row {
        spacing: 30

        BrandMark {}
        BrandMark { width: 60; height: 60 }
        BrandMark { width: 160; height: 160 }

        TickRing {
            width: 160
            height: 100
            count: 12
            length: 0.4
            thickness: 0.06
        }
    }
}
