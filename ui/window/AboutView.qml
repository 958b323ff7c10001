import QtQuick
import Vellomar.Design

// Name, version and origin of the program.
Item {
    id: root

    required property string version

    Accessible.role: Accessible.Pane
    Accessible.name: qsTranslate("Texts", "Informazioni su Vellomar")
    implicitWidth: 300
    implicitHeight: column.height + 64

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    Column {
        id: column

        x: 16
        y: 32
        width: parent.width - 32
        spacing: 6

        BrandMark {
            objectName: "mark"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 72
            height: 72
        }

        // Room for the mark's glow.
        Item {
            width: 1
            height: 6
        }

        Label {
            width: parent.width
            text: "Vellomar"
            font.pixelSize: 20
            font.weight: Font.Bold
            horizontalAlignment: Text.AlignHCenter
        }

        Paragraph {
            objectName: "version"
            width: parent.width
            words: qsTranslate("Texts", "Versione %1").arg(root.version)
            font.pixelSize: 11
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
        }

        Paragraph {
            objectName: "credits"
            width: parent.width
            words: qsTranslate("Texts", "Backup cifrati con restic e rclone.")
            font.pixelSize: 11
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
