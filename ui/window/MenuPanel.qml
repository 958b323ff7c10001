pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Window

// The panel that the tray's item opens: the state of the backups, and buttons for them.
Item {
    id: root

    required property AppModel model
    required property Summary summary

    signal windowAsked
    signal quitAsked

    Accessible.role: Accessible.Pane
    Accessible.name: "Vellomar"
    implicitWidth: 330
    implicitHeight: column.height + 24

    // What keeps a backup from starting may be found only after a while.
    Connections {
        target: root.model

        function onBackupHindered() {
            root.windowAsked();
        }
    }

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    Column {
        id: column

        x: 12
        y: 12
        width: root.width - 24
        spacing: 10

        Item {
            objectName: "top"
            width: parent.width
            height: Math.max(dial.height, texts.height) + 28

            Raised {
                anchors.fill: parent
            }

            TimeDial {
                id: dial

                objectName: "dial"
                x: 14
                anchors.verticalCenter: parent.verticalCenter
                diameter: 86
                summary: root.summary
            }

            Column {
                id: texts

                anchors.left: dial.right
                anchors.leftMargin: 14
                anchors.right: parent.right
                anchors.rightMargin: 14
                anchors.verticalCenter: parent.verticalCenter
                spacing: 4

                Eyebrow {
                    objectName: "eyebrow"
                    width: parent.width
                    text: root.summary.panelEyebrow
                    elide: Text.ElideRight
                }

                Label {
                    objectName: "headline"
                    width: parent.width
                    text: root.summary.panelHeadline
                    font.pixelSize: 17
                    font.weight: Font.DemiBold
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 12 // 0.7 of its size
                    maximumLineCount: 1
                    elide: Text.ElideRight
                }

                Paragraph {
                    objectName: "detail"
                    width: parent.width
                    words: root.summary.panelDetail
                    font.pixelSize: 11
                    color: Theme.secondary
                    maximumLineCount: 4
                    elide: Text.ElideRight
                }
            }
        }

        Repeater {
            model: root.summary.panelRows

            MenuPanelRow {
                required property destinationState value

                width: column.width
                destination: value
            }
        }

        Item {
            objectName: "buttons"
            width: parent.width
            height: Math.max(start.height, power.height)

            PillButton {
                id: start

                objectName: "start"
                anchors.verticalCenter: parent.verticalCenter
                visible: !root.summary.running
                text: qsTranslate("Texts", "Esegui backup")
                enabled: root.model.config.hasDestination && !root.model.run.busy
                         && !root.model.starting
                onClicked: root.model.startBackup()
            }

            PillButton {
                id: stop

                objectName: "stop"
                anchors.verticalCenter: parent.verticalCenter
                visible: root.summary.running
                text: qsTranslate("Texts", "Interrompi")
                kind: PillButton.Kind.Outline
                onClicked: root.model.cancelBackup()
            }

            PillButton {
                objectName: "open"
                anchors.left: start.visible ? start.right : stop.right
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: qsTranslate("Texts", "Apri Vellomar")
                kind: PillButton.Kind.Quiet
                onClicked: root.windowAsked()
            }

            IconButton {
                id: power

                objectName: "power"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                symbol: "power"
                help: qsTranslate("Texts", "Esci da Vellomar")
                onClicked: root.quitAsked()
            }
        }
    }
}
