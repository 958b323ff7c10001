import QtQuick
import Vellomar.Design

// A value, and below it a label that says what it is.
Column {
    id: root

    required property string label
    required property string value

    spacing: 2
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTranslate("Texts", "%1: %2").arg(label).arg(value)

    Digits {
        text: root.value
        Accessible.ignored: true
    }

    Label {
        text: root.label
        font.pixelSize: 11
        color: Theme.secondary
        Accessible.ignored: true
    }
}
