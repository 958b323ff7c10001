pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vellomar.Design
import Vellomar.Glance

// Every control and page of the window in every state, on prepared data. A new page of the gallery
// is an entry in `pages`.
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
            name: "small-buttons"
            source: "SmallButtonsPage.qml"
        },
        GalleryPage {
            name: "choices"
            source: "ChoicesPage.qml"
        },
        GalleryPage {
            name: "menu"
            source: "MenuPage.qml"
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
            name: "rows"
            source: "RowsPage.qml"
        },
        GalleryPage {
            name: "combos"
            source: "CombosPage.qml"
        },
        GalleryPage {
            name: "confirmation"
            source: "ConfirmationPage.qml"
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
            name: "empty-states"
            source: "EmptyStatesPage.qml"
        },
        GalleryPage {
            name: "dials"
            source: "OverviewPageDials.qml"
        },
        GalleryPage {
            name: "overview-fresh"
            source: "OverviewPageState.qml"
            given: ({prepared: "fresh"})
        },
        GalleryPage {
            name: "overview-kit"
            source: "OverviewPageState.qml"
            given: ({prepared: "kit"})
        },
        GalleryPage {
            name: "overview-launching"
            source: "OverviewPageState.qml"
            given: ({prepared: "launching"})
        },
        GalleryPage {
            name: "overview-running"
            source: "OverviewPageState.qml"
            given: ({prepared: "running"})
        },
        GalleryPage {
            name: "overview-well"
            source: "OverviewPageState.qml"
            given: ({prepared: "well"})
        },
        GalleryPage {
            name: "overview-single"
            source: "OverviewPageState.qml"
            given: ({prepared: "single"})
        },
        GalleryPage {
            name: "overview-failed"
            source: "OverviewPageState.qml"
            given: ({prepared: "failed"})
        },
        GalleryPage {
            name: "overview-key-error"
            source: "OverviewPageState.qml"
            given: ({prepared: "keyError"})
        },
        GalleryPage {
            name: "overview-starting"
            source: "OverviewPageState.qml"
            given: ({prepared: "starting"})
        },
        GalleryPage {
            name: "overview-support"
            source: "OverviewPageState.qml"
            given: ({prepared: "support"})
        },
        GalleryPage {
            name: "overview-long"
            source: "OverviewPageState.qml"
            given: ({prepared: "long"})
        },
        GalleryPage {
            name: "destinations-no-disk"
            source: "DestinationsPageState.qml"
            given: ({prepared: "noDisk"})
        },
        GalleryPage {
            name: "destinations-disk"
            source: "DestinationsPageState.qml"
            given: ({prepared: "disk"})
        },
        GalleryPage {
            name: "destinations-disk-away"
            source: "DestinationsPageState.qml"
            given: ({prepared: "diskAway"})
        },
        GalleryPage {
            name: "destinations-disk-unknown"
            source: "DestinationsPageState.qml"
            given: ({prepared: "diskUnknown"})
        },
        GalleryPage {
            name: "destinations-system-disk"
            source: "DestinationsPageState.qml"
            given: ({prepared: "systemDisk"})
        },
        GalleryPage {
            name: "destinations-measuring"
            source: "DestinationsPageState.qml"
            given: ({prepared: "diskMeasuring"})
        },
        GalleryPage {
            name: "destinations-fits"
            source: "DestinationsPageState.qml"
            given: ({prepared: "fits"})
        },
        GalleryPage {
            name: "destinations-too-small"
            source: "DestinationsPageState.qml"
            given: ({prepared: "tooSmall"})
        },
        GalleryPage {
            name: "destinations-growth-days"
            source: "DestinationsPageState.qml"
            given: ({prepared: "growthDays"})
        },
        GalleryPage {
            name: "destinations-growth-years"
            source: "DestinationsPageState.qml"
            given: ({prepared: "growthYears"})
        },
        GalleryPage {
            name: "destinations-drive"
            source: "DestinationsPageState.qml"
            given: ({prepared: "noDisk", scrolled: 0.4})
        },
        GalleryPage {
            name: "destinations-drive-connecting"
            source: "DestinationsPageState.qml"
            given: ({prepared: "driveConnecting", scrolled: 0.5})
        },
        GalleryPage {
            name: "destinations-drive-error"
            source: "DestinationsPageState.qml"
            given: ({prepared: "driveError", scrolled: 0.5})
        },
        GalleryPage {
            name: "destinations-drive-connected"
            source: "DestinationsPageState.qml"
            given: ({prepared: "driveConnected", scrolled: 0.5})
        },
        GalleryPage {
            name: "destinations-drive-versions"
            source: "DestinationsPageState.qml"
            given: ({prepared: "driveVersions", scrolled: 0.5})
        },
        GalleryPage {
            name: "destinations-sftp"
            source: "DestinationsPageState.qml"
            given: ({prepared: "sftp", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-sftp-connecting"
            source: "DestinationsPageState.qml"
            given: ({prepared: "sftpConnecting", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-sftp-connected"
            source: "DestinationsPageState.qml"
            given: ({prepared: "sftpConnected", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-webdav"
            source: "DestinationsPageState.qml"
            given: ({prepared: "webdav", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-webdav-error"
            source: "DestinationsPageState.qml"
            given: ({prepared: "webdavError", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-s3"
            source: "DestinationsPageState.qml"
            given: ({prepared: "s3", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-s3-unversioned"
            source: "DestinationsPageState.qml"
            given: ({prepared: "s3Unversioned", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-s3-versioned"
            source: "DestinationsPageState.qml"
            given: ({prepared: "s3Versioned", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-smb"
            source: "DestinationsPageState.qml"
            given: ({prepared: "smb", scrolled: 1})
        },
        GalleryPage {
            name: "destinations-connected"
            source: "DestinationsPageState.qml"
            given: ({prepared: "allConnected", scrolled: 1})
        },
        GalleryPage {
            name: "sources-empty"
            source: "SourcesPageState.qml"
            given: ({prepared: "noSources"})
        },
        GalleryPage {
            name: "sources-unmeasured"
            source: "SourcesPageState.qml"
            given: ({prepared: "unmeasured"})
        },
        GalleryPage {
            name: "sources-measuring"
            source: "SourcesPageState.qml"
            given: ({prepared: "measuring"})
        },
        GalleryPage {
            name: "sources-partly-measured"
            source: "SourcesPageState.qml"
            given: ({prepared: "partlyMeasured"})
        },
        GalleryPage {
            name: "sources-measured"
            source: "SourcesPageState.qml"
            given: ({prepared: "measured"})
        },
        GalleryPage {
            name: "sources-wrong"
            source: "SourcesPageState.qml"
            given: ({prepared: "wrongExclude", typed: "*.[jp", ended: true})
        },
        GalleryPage {
            name: "sources-refused"
            source: "SourcesPageState.qml"
            given: ({prepared: "refusedDrop"})
        },
        GalleryPage {
            name: "sources-many"
            source: "SourcesPageState.qml"
            given: ({prepared: "many"})
        },
        GalleryPage {
            name: "sources-many-end"
            source: "SourcesPageState.qml"
            given: ({prepared: "many", ended: true})
        },
        GalleryPage {
            name: "sources-dragged"
            source: "SourcesPageState.qml"
            given: ({prepared: "measured", dragged: true})
        },
        GalleryPage {
            name: "sheet-kit"
            source: "SheetPage.qml"
            given: ({prepared: "kit"})
        },
        GalleryPage {
            name: "sheet-kit-saved"
            source: "SheetPage.qml"
            given: ({prepared: "well"})
        },
        GalleryPage {
            name: "sheet-kit-notice"
            source: "SheetPage.qml"
            given: ({prepared: "long"})
        },
        GalleryPage {
            name: "sheet-kit-keyless"
            source: "SheetPage.qml"
            given: ({prepared: "keyError"})
        },
        GalleryPage {
            name: "sheet-access"
            source: "SheetPage.qml"
            given: ({prepared: "access", waiting: DiskAccess.GatedAction.Backup})
        },
        GalleryPage {
            name: "window-overview"
            source: "WindowPage.qml"
            given: ({prepared: "well", section: AppModel.Section.Overview})
        },
        GalleryPage {
            name: "window-restore"
            source: "WindowPage.qml"
            given: ({prepared: "well", section: AppModel.Section.Restore})
        },
        GalleryPage {
            name: "window-sources"
            source: "WindowPage.qml"
            given: ({prepared: "fresh", section: AppModel.Section.Sources})
        },
        GalleryPage {
            name: "window-destinations"
            source: "WindowPage.qml"
            given: ({prepared: "stale", section: AppModel.Section.Destinations})
        },
        GalleryPage {
            name: "window-activity"
            source: "WindowPage.qml"
            given: ({prepared: "running", section: AppModel.Section.Activity})
        },
        GalleryPage {
            name: "window-settings"
            source: "WindowPage.qml"
            given: ({prepared: "long", section: AppModel.Section.Settings})
        },
        GalleryPage {
            name: "tray-panel-fresh"
            source: "TrayPanelPage.qml"
            given: ({prepared: "fresh"})
        },
        GalleryPage {
            name: "tray-panel-running"
            source: "TrayPanelPage.qml"
            given: ({prepared: "running"})
        },
        GalleryPage {
            name: "tray-panel-well"
            source: "TrayPanelPage.qml"
            given: ({prepared: "well"})
        },
        GalleryPage {
            name: "tray-panel-stale"
            source: "TrayPanelPage.qml"
            given: ({prepared: "stale"})
        },
        GalleryPage {
            name: "tray-panel-long"
            source: "TrayPanelPage.qml"
            given: ({prepared: "long"})
        },
        GalleryPage {
            name: "licenses"
            source: "LicensesPage.qml"
            given: ({})
        },
        GalleryPage {
            name: "about"
            source: "AboutPage.qml"
            given: ({})
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

        Scroller {
            anchors.fill: parent
            contentHeight: names.height
            T.ScrollBar.vertical: ScrollBar {}

            Column {
                id: names

                width: list.width
                padding: 12
                spacing: 4

                Repeater {
                    model: root.pages

                    PillButton {
                        required property GalleryPage modelData
                        required property int index

                        width: list.width - 24
                        text: modelData.name
                        kind: index === root.current ? PillButton.Kind.Primary
                                                     : PillButton.Kind.Quiet
                        onClicked: root.current = index
                    }
                }
            }
        }
    }

    Loader {
        readonly property GalleryPage page: root.pages[root.current]

        anchors.fill: parent
        anchors.leftMargin: list.width
        onPageChanged: setSource(page.source, page.given)
    }
}
