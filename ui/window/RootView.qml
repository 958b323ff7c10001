import QtQuick
import Vellomar.Glance
import Vellomar.Sheets
import Vellomar.Window

// All that the window shows: the sidebar, and beside it the page of the section with its emblem
// behind it; and the sheets, which can come over any page. It has the keyboard until a control has.
Item {
    id: root

    required property AppModel model
    required property Summary summary

    signal aboutAsked
    signal settingsAsked
    signal licensesAsked
    signal quitAsked

    focus: true
    Keys.onPressed: event => pages.press(event)

    // By the number of the section.
    readonly property list<string> symbols: ["gauge.with.needle", "clock.arrow.circlepath",
        "folder", "externaldrive", "list.bullet.rectangle", "gearshape"]

    // Above the page, so that its shadow falls on it.
    Sidebar {
        id: sidebar

        z: 1
        height: parent.height
        model: root.model
        summary: root.summary
        symbols: root.symbols
        onAboutAsked: root.aboutAsked()
        onSettingsAsked: root.settingsAsked()
        onLicensesAsked: root.licensesAsked()
        onQuitAsked: root.quitAsked()
    }

    PageArea {
        id: pages

        objectName: "pages"
        anchors.fill: parent
        anchors.leftMargin: sidebar.width
        model: root.model
        summary: root.summary
        symbols: root.symbols
    }

    RecoveryKitSheet {
        model: root.model
    }

    AccessSheet {
        model: root.model
    }
}
