import QtQuick
import Vellomar.Design
import Vellomar.Destinations

// A large figure with its label above and a note below, which is dimmed while the figure is only a
// promise.
Column {
    id: root

    required property spaceFigure figure

    spacing: 4
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTranslate("Texts", "%1: %2").arg(figure.label).arg(figure.value)
    Accessible.description: figure.note

    Paragraph {
        objectName: "label"
        width: parent.width
        words: root.figure.label
        font.pixelSize: 12
        font.weight: Font.Medium
        Accessible.ignored: true
    }

    Item {
        width: parent.width
        height: value.implicitHeight

        Digits {
            id: value

            objectName: "value"
            width: Math.min(implicitWidth, parent.width)
            text: root.figure.value
            minimumScale: 0.5
            font: Qt.font({family: Theme.textFamily, pixelSize: 26, weight: Font.DemiBold})
            Accessible.ignored: true
        }
    }

    Paragraph {
        objectName: "note"
        width: parent.width
        words: root.figure.note
        font.pixelSize: 10
        color: root.figure.promise ? Theme.tertiary : Theme.secondary
        Accessible.ignored: true
    }
}
