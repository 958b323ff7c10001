import QtQuick

// A group of controls on a page: a raised block with an optional heading.
Item {
    id: root

    property string title: ""
    default property alias content: body.data

    implicitWidth: column.implicitWidth + 36
    implicitHeight: column.implicitHeight + 36
    width: parent ? parent.width : implicitWidth
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Raised {
        anchors.fill: parent
    }

    Column {
        id: column

        x: 18
        y: 18
        width: root.width - 36
        spacing: 14

        Eyebrow {
            width: parent.width
            visible: root.title !== ""
            text: root.title
            elide: Text.ElideRight
        }

        Column {
            id: body

            width: parent.width
            spacing: 14
        }
    }
}
