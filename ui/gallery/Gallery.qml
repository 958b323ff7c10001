pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

// Everything the window is made of, in every state, on prepared data. A new page is one more entry
// in the list.
Item {
    id: root

    property int current: 0
    property bool listed: true
    readonly property list<GalleryPage> pages: [
        GalleryPage {
            name: "colours"
            source: "ColoursPage.qml"
        },
        GalleryPage {
            name: "buttons"
            source: "ButtonsPage.qml"
        },
        GalleryPage {
            name: "choices"
            source: "ChoicesPage.qml"
        },
        GalleryPage {
            name: "surfaces"
            source: "SurfacesPage.qml"
        },
        GalleryPage {
            name: "fields"
            source: "FieldsPage.qml"
        },
        GalleryPage {
            name: "rings"
            source: "RingsPage.qml"
        },
        GalleryPage {
            name: "symbols"
            source: "SymbolsPage.qml"
        },
        GalleryPage {
            name: "texts"
            source: "TextsPage.qml"
        },
        GalleryPage {
            name: "sheet"
            source: "SheetPage.qml"
        }
    ]

    width: 980
    height: 660

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    Surface {
        id: list

        width: root.listed ? 150 : 0
        height: parent.height
        visible: root.listed
        fill: Theme.sidebarGradient

        Column {
            x: 12
            y: 12
            width: parent.width - 24
            spacing: 4

            Repeater {
                model: root.pages

                PillButton {
                    required property GalleryPage modelData
                    required property int index

                    width: parent ? (parent as Item).width : 0
                    text: modelData.name
                    kind: index === root.current ? PillButton.Kind.Primary
                                                 : PillButton.Kind.Quiet
                    onClicked: root.current = index
                }
            }
        }
    }

    Loader {
        anchors.fill: parent
        anchors.leftMargin: list.width
        source: root.pages[root.current].source
    }
}
