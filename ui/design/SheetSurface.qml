import QtQuick

// The background of a sheet with padding around its content.
Item {
    id: root

    property real padding: 26
    property real spacing: 18
    default property alias content: body.data

    implicitHeight: body.implicitHeight + 2 * padding

    SheetGround {
        anchors.fill: parent
    }

    Column {
        id: body

        x: root.padding
        y: root.padding
        width: root.width - 2 * root.padding
        spacing: root.spacing
    }
}
