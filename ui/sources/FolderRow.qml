import QtQuick
import Vellomar.Design
import Vellomar.Sources

// A folder that goes into the backup. A tooltip has the whole path where there is no room for it.
Item {
    id: root

    required property sourceRow folder
    property bool divided: false // from a row above
    readonly property alias closing: cross

    // The user wants it removed.
    signal removed

    implicitHeight: Math.max(well.height, texts.height, cross.height) + 20
    Accessible.role: Accessible.ListItem
    Accessible.name: qsTranslate("Texts", "%1: %2").arg(name.text).arg(path.text)
    Accessible.description: folder.size

    Divider {
        objectName: "divider"
        visible: root.divided
    }

    GlyphWell {
        id: well

        objectName: "well"
        anchors.verticalCenter: parent.verticalCenter
        symbol: root.folder.symbol
    }

    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        x: well.width + 12
        width: Math.max(0, size.x - 12 - x)
        spacing: 2

        OneLine {
            id: name

            objectName: "name"
            width: parent.width
            line: root.folder.name
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignLeft // of a name from right to left, too
        }

        OneLine {
            id: path

            objectName: "path"
            width: parent.width
            line: root.folder.path
            font.pixelSize: 11
            color: Theme.secondary
            elide: Text.ElideMiddle
            horizontalAlignment: Text.AlignLeft

            HoverHandler {
                id: pointer
            }

            Tip {
                objectName: "tip"
                visible: pointer.hovered && path.truncated
                text: path.line
            }
        }
    }

    Label {
        id: size

        objectName: "size"
        anchors.verticalCenter: parent.verticalCenter
        x: cross.x - width - (text === "" ? 0 : 12)
        text: root.folder.size
        color: Theme.secondary
        Accessible.ignored: true
    }

    IconButton {
        id: cross

        objectName: "remove"
        anchors.verticalCenter: parent.verticalCenter
        x: root.width - width
        symbol: "xmark"
        help: qsTranslate("Texts", "Rimuovi")
        Accessible.name: qsTranslate("Texts", "%1: %2").arg(help).arg(root.folder.path)
        onClicked: root.removed()
    }
}
