import QtQuick
import QtQuick.Templates as T

// A page with a header and, below it, its content.
PagePane {
    id: root

    required property string subtitle
    default property alias content: body.data

    contentHeight: column.height
    T.ScrollBar.vertical: ScrollBar {}

    Column {
        id: column

        leftPadding: 36
        rightPadding: 36
        topPadding: 46
        bottomPadding: 30
        spacing: 16

        PageHeader {
            width: body.width
            title: root.title
            subtitle: root.subtitle
        }

        Column {
            id: body

            width: Math.max(0, Math.min(860, root.width - 72))
            spacing: 16
        }
    }
}
