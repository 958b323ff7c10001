pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Window

// The product's name, the sections, and at the foot the state of the backups.
Item {
    id: root

    required property AppModel model
    required property Summary summary
    required property Sections sections

    signal aboutAsked
    signal settingsAsked
    signal licensesAsked
    signal quitAsked

    implicitWidth: 222

    Surface {
        anchors.fill: parent
        fill: Theme.sidebarGradient
        shadowColor: Theme.black(0.3)
        shadowRadius: 16
        shadowOffset: Qt.point(6, 0)
    }

    Rectangle {
        objectName: "edge"
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.black(0.28)
    }

    // Scrolls where the window is too low for all sections.
    Scroller {
        id: scroller

        objectName: "way"
        anchors.fill: parent
        anchors.bottomMargin: foot.height + 18 + 12
        contentHeight: items.y + items.height + 6

        Row {
            id: brand

            objectName: "brand"
            x: 24
            y: 60
            spacing: 10
            Accessible.role: Accessible.StaticText
            Accessible.name: "Vellomar"

            BrandMark {
                width: 26
                height: 26
            }

            Row {
                anchors.verticalCenter: parent.verticalCenter

                Label {
                    text: "Vell"
                    font.pixelSize: 17
                    font.weight: Font.Bold
                    Accessible.ignored: true
                }

                Label {
                    text: "omar"
                    font.pixelSize: 17
                    font.weight: Font.Bold
                    color: Theme.amber
                    Accessible.ignored: true
                }
            }
        }

        AppMenuButton {
            objectName: "menuButton"
            x: root.width - 12 - width
            anchors.verticalCenter: brand.verticalCenter
            onAboutAsked: root.aboutAsked()
            onSettingsAsked: root.settingsAsked()
            onLicensesAsked: root.licensesAsked()
            onQuitAsked: root.quitAsked()
        }

        Column {
            id: items

            objectName: "items"
            x: 12
            anchors.top: brand.bottom
            anchors.topMargin: 34 + spacing
            width: root.width - 24
            spacing: 6
            Accessible.role: Accessible.PageTabList
            Accessible.name: qsTranslate("Texts", "Sezioni")

            Repeater {
                id: repeater

                model: root.sections.all

                SidebarItem {
                    required property WindowSection modelData
                    required property int index

                    width: items.width
                    symbol: modelData.symbol
                    title: root.model.title(index)
                    selected: root.model.section === index
                    onClicked: root.model.section = index
                    Keys.onUpPressed: (repeater.itemAt(index - 1) as SidebarItem)?.forceActiveFocus(
                                          Qt.BacktabFocusReason)
                    Keys.onDownPressed: (repeater.itemAt(index + 1) as SidebarItem)?.forceActiveFocus(
                                            Qt.TabFocusReason)
                }
            }
        }
    }

    ToneDot {
        id: foot

        objectName: "state"
        x: 24
        width: parent.width - 48
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 18
        text: root.summary.sidebarState
        tone: root.summary.sidebarTone
    }
}
