pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview

// Is everything protected now? The dial of the last day with the state in words and the one action
// that matters, and beside it what is still missing and a tile for each destination.
Item {
    id: root

    required property AppModel model
    required property Summary summary
    readonly property alias scrolling: flickable

    Accessible.role: Accessible.Pane
    Accessible.name: model.title(AppModel.Section.Overview)

    // What the keyboard goes to is brought into sight.
    function reveal(item: Item) {
        let inside = item;
        while (inside !== null && inside !== columns) {
            inside = inside.parent;
        }
        if (inside === null) {
            return;
        }
        const top = item.mapToItem(flickable.contentItem, 0, 0).y - 12;
        const bottom = top + item.height + 24;
        if (top < flickable.contentY) {
            flickable.contentY = Math.max(0, top);
        } else if (bottom > flickable.contentY + flickable.height) {
            flickable.contentY = Math.min(flickable.contentHeight, bottom) - flickable.height;
        }
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() {
            root.reveal(root.Window.window.activeFocusItem);
        }
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        contentWidth: width
        contentHeight: Math.max(height, columns.height + 60)
        boundsBehavior: interactive ? Flickable.DragAndOvershootBounds : Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true

        Item {
            id: columns

            objectName: "columns"
            x: Math.round((flickable.width - width) / 2)
            y: Math.round((flickable.contentHeight - height) / 2)
            width: Math.max(0, Math.min(900, flickable.width - 72))
            height: Math.max(verdict.height, details.height)

            Item {
                id: verdict

                objectName: "verdict"
                y: Math.round((columns.height - height) / 2)
                width: columns.width - 36 - details.width
                height: notice.visible ? notice.y + notice.height : button.y + button.height

                TimeDial {
                    id: dial

                    objectName: "dial"
                    anchors.horizontalCenter: parent.horizontalCenter
                    summary: root.summary
                }

                Label {
                    id: title

                    objectName: "title"
                    anchors.top: dial.bottom
                    anchors.topMargin: 28
                    width: parent.width
                    text: root.summary.title
                    font.pixelSize: 25
                    font.weight: Font.Bold
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                }

                Label {
                    id: detail

                    objectName: "detail"
                    anchors.top: title.bottom
                    anchors.topMargin: 7
                    width: parent.width
                    text: root.summary.detail
                    color: Theme.secondary
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
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
                    enabled: root.summary.action !== Summary.Action.Starting
                    kind: root.summary.action === Summary.Action.Stop ? PillButton.Kind.Outline
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
                    width: noticeText.x + noticeText.width
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

                    Label {
                        id: noticeText

                        objectName: "noticeText"
                        x: noticeSymbol.width + 6
                        width: Math.min(Math.ceil(implicitWidth), verdict.width - x)
                        text: notice.text
                        font.pixelSize: 12
                        color: Theme.coral
                        wrapMode: Text.Wrap
                        Accessible.ignored: true
                    }
                }
            }

            Column {
                id: details

                objectName: "details"
                x: columns.width - width
                y: Math.round((columns.height - height) / 2)
                width: 384
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
                    text: qsTr("Destinazioni")
                }

                Repeater {
                    model: 3 // AppModel.Destination

                    DestinationTile {
                        required property int index

                        objectName: "tile" + index
                        width: parent ? (parent as Item).width : 0
                        model: root.model
                        destination: index
                    }
                }
            }
        }
    }
}
