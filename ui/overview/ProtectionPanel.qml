pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview

// The checks of what protects the data, one row for each.
Item {
    id: root

    required property Summary summary

    implicitHeight: column.height + 32
    Accessible.role: Accessible.Grouping
    Accessible.name: heading.text

    Raised {
        anchors.fill: parent
    }

    Column {
        id: column

        x: 10
        y: 16
        width: root.width - 20
        spacing: 12

        Item {
            objectName: "head"
            x: 8
            width: parent.width - 16
            height: Math.max(heading.height, badge.height)

            Eyebrow {
                id: heading

                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - badge.width - 8
                text: qsTranslate("Texts", "Protezione")
                elide: Text.ElideRight
            }

            Surface {
                id: badge

                readonly property color color: root.summary.protectedWell ? Theme.mint : Theme.amber

                objectName: "badge"
                anchors.verticalCenter: parent.verticalCenter
                x: parent.width - width
                width: Math.ceil(badgeText.implicitWidth) + 18
                height: Math.ceil(badgeText.implicitHeight) + 8
                radius: height / 2
                fill: Theme.flat(Theme.faded(color, 0.14))

                Label {
                    id: badgeText

                    objectName: "badgeText"
                    x: 9
                    y: 4
                    text: root.summary.badge
                    font.pixelSize: 11
                    font.weight: Font.DemiBold
                    color: badge.color
                }
            }
        }

        Column {
            width: parent.width
            spacing: 2

            Repeater {
                model: root.summary.checkRows

                ProtectionRow {
                    required property protectionCheck value

                    objectName: value.id
                    width: parent ? (parent as Item).width : 0
                    ok: value.ok
                    title: value.title
                    detail: value.detail
                    hasRemedy: value.hasRemedy
                    onClicked: root.summary.remedy(value.id)
                }
            }
        }
    }
}
