import QtQuick
import Vellomar.Design

// Title and subtitle at the top of a page, with the amber bar between them.
Column {
    id: root

    required property string title
    required property string subtitle

    spacing: 9

    Label {
        width: root.width
        text: root.title
        font.pixelSize: 28
        font.weight: Font.Bold
        wrapMode: Text.Wrap
        Accessible.role: Accessible.Heading
    }

    Surface {
        width: 30
        height: 3
        radius: 1.5
        fill: Theme.amberGradient
    }

    Label {
        width: root.width
        text: root.subtitle
        visible: text !== ""
        color: Theme.secondary
        wrapMode: Text.Wrap
    }
}
