import QtQuick
import Vellomar.Design

// Title and subtitle at the top of a page, with the amber bar between them.
Column {
    id: root

    required property string title
    required property string subtitle

    spacing: 9

    Paragraph {
        width: root.width
        words: root.title
        font.pixelSize: 28
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
    }

    Surface {
        width: 30
        height: 3
        radius: 1.5
        fill: Theme.amberGradient
    }

    Paragraph {
        width: root.width
        words: root.subtitle
        visible: words !== ""
        color: Theme.secondary
    }
}
