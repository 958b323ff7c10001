pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview

// Is everything protected now? The dial of the last day, the state in words and the main action;
// beside it the protection panel and a tile for each destination.
PagePane {
    id: root

    required property AppModel model
    required property Summary summary

    title: model.title(AppModel.Section.Overview)
    contentHeight: Math.max(height, columns.height + 60)
    boundsBehavior: interactive ? Flickable.DragAndOvershootBounds : Flickable.StopAtBounds

    Item {
        id: columns

        // On a screen too small for the smallest window, the columns are stacked.
        readonly property bool stacked: root.width < 758

        objectName: "columns"
        x: Math.round((root.width - width) / 2)
        y: Math.round((root.contentHeight - height) / 2)
        width: Math.max(0, Math.min(900, root.width - 72))
        height: stacked ? verdict.height + 36 + details.height
                        : Math.max(verdict.height, details.height)

        Item {
            id: verdict

            objectName: "verdict"
            y: columns.stacked ? 0 : Math.round((columns.height - height) / 2)
            width: columns.stacked ? columns.width : columns.width - 36 - details.width
            height: notice.visible ? notice.y + notice.height : button.y + button.height

            TimeDial {
                id: dial

                objectName: "dial"
                anchors.horizontalCenter: parent.horizontalCenter
                summary: root.summary
            }

            Paragraph {
                id: title

                objectName: "title"
                anchors.top: dial.bottom
                anchors.topMargin: 28
                width: parent.width
                words: root.summary.title
                font.pixelSize: 25
                font.weight: Font.Bold
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
            }

            Paragraph {
                id: detail

                objectName: "detail"
                anchors.top: title.bottom
                anchors.topMargin: 7
                width: parent.width
                words: root.summary.detail
                color: Theme.secondary
                horizontalAlignment: Text.AlignHCenter
            }

            OneLine {
                id: currentFile

                objectName: "currentFile"
                anchors.top: detail.bottom
                anchors.topMargin: 4
                width: parent.width
                line: root.summary.currentFile
                font.pixelSize: 10
                color: Theme.tertiary
                horizontalAlignment: Text.AlignHCenter
                elide: Text.ElideMiddle
                Accessible.ignored: line === " "
            }

            PillButton {
                id: button

                objectName: "action"
                anchors.top: currentFile.bottom
                anchors.topMargin: 14
                anchors.horizontalCenter: parent.horizontalCenter
                large: true
                enabled: root.summary.action !== OverviewTexts.Action.Starting
                kind: root.summary.action === OverviewTexts.Action.Stop ? PillButton.Kind.Outline
                                                                  : PillButton.Kind.Primary
                text: root.summary.actionLabel
                onClicked: root.summary.act()
            }

            Item {
                id: notice

                readonly property string text: root.summary.notice

                objectName: "notice"
                anchors.top: button.bottom
                anchors.topMargin: 12
                anchors.horizontalCenter: parent.horizontalCenter
                width: noticeText.start + noticeText.contentWidth
                height: noticeText.height
                visible: text !== ""
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text

                Symbol {
                    id: noticeSymbol

                    objectName: "noticeSymbol"
                    name: "exclamationmark.triangle"
                    points: 12
                    color: Theme.coral
                }

                // The lines are centred in the whole width; the symbol is beside the widest line.
                Paragraph {
                    id: noticeText

                    readonly property real start: noticeSymbol.width + 6

                    objectName: "noticeText"
                    x: start - (width - contentWidth) / 2
                    width: verdict.width - start
                    words: notice.text
                    font.pixelSize: 12
                    color: Theme.coral
                    horizontalAlignment: Text.AlignHCenter
                    Accessible.ignored: true
                }
            }
        }

        Column {
            id: details

            objectName: "details"
            x: columns.stacked ? Math.round((columns.width - width) / 2)
                               : columns.width - width
            y: columns.stacked ? verdict.height + 36
                               : Math.round((columns.height - height) / 2)
            width: Math.min(384, columns.width)
            spacing: 12

            ProtectionPanel {
                objectName: "panel"
                width: parent.width
                summary: root.summary
            }

            Eyebrow {
                objectName: "destinations"
                leftPadding: 6
                topPadding: 8
                text: qsTranslate("Texts", "Destinazioni")
            }

            Repeater {
                model: root.summary.destinationRows

                DestinationTile {
                    required property destinationState value

                    objectName: "tile" + value.id
                    width: parent ? (parent as Item).width : 0
                    model: root.model
                    destination: value
                }
            }
        }
    }
}
