import QtQuick
import Vellomar.Design

// A setting: title and subtitle at the leading side, its control at the trailing side, or below
// them where both don't fit. Several controls go into one Row. Disabled, it fades the texts only:
// controls fade by themselves.
Item {
    id: root

    required property string title
    property string subtitle: ""
    default property Item control

    readonly property real gap: 16
    // The least width of the texts beside a control.
    readonly property real least: Math.min(200, metrics.advanceWidth(title))
    readonly property real wanted: control?.implicitWidth ?? 0
    readonly property bool stacked: wanted + gap + least > width

    implicitWidth: 480
    implicitHeight: stacked ? texts.height + 10 + place.height
                            : Math.max(texts.height, place.height)
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: subtitle

    Binding {
        target: root.control
        property: "width"
        value: Math.min(root.wanted, root.width)
        when: root.control !== null
    }

    FontMetrics {
        id: metrics
        font: heading.font
    }

    Column {
        id: texts

        objectName: "texts"
        y: root.stacked ? 0 : (root.height - height) / 2
        width: root.stacked ? root.width : root.width - root.wanted - root.gap
        spacing: 2
        opacity: root.enabled ? 1 : 0.38

        Paragraph {
            id: heading

            width: parent.width
            words: root.title
            Accessible.ignored: true
        }

        Paragraph {
            width: parent.width
            visible: words !== ""
            words: root.subtitle
            font.pixelSize: 12
            color: Theme.secondary
            Accessible.ignored: true
        }
    }

    Item {
        id: place

        x: root.stacked ? 0 : root.width - width
        y: root.stacked ? texts.height + 10 : (root.height - height) / 2
        width: root.control?.width ?? 0
        height: root.control?.height ?? 0
        children: root.control === null ? [] : [root.control]
    }
}
