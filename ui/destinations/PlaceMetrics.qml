import QtQuick
import Vellomar.Design
import Vellomar.Destinations

// The button that changes a destination, and beside it what is known of that in figures.
FlowLayout {
    id: root

    required property place place
    required property string action // text of the button

    signal acted()

    spacing: 24

    PillButton {
        objectName: "action"
        kind: PillButton.Kind.Outline
        text: root.action
        onClicked: root.acted()
    }

    Metric {
        objectName: "free"
        visible: value !== ""
        label: qsTranslate("Texts", "Spazio libero")
        value: root.place.free
    }

    Metric {
        objectName: "versions"
        visible: value !== ""
        label: qsTranslate("Texts", "Versioni")
        value: root.place.versions
    }

    Metric {
        objectName: "stored"
        visible: value !== ""
        label: qsTranslate("Texts", "Occupato dai backup")
        value: root.place.stored
    }
}
