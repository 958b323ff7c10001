import QtQuick
import Vellomar.Glance
import Vellomar.Sheets
import Vellomar.Window

// The content of the window: the sidebar, the page of the section, and the sheets, which can come
// over any page. It has the focus until a control has it.
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

    readonly property Sections sections: Sections {
        model: root.model
        summary: root.summary
    }

    // Above the page, so that its shadow falls on it.
    Sidebar {
        id: sidebar

        z: 1
        height: parent.height
        model: root.model
        summary: root.summary
        sections: root.sections
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
        sections: root.sections
    }

    RecoveryKitSheet {
        model: root.model
    }

    AccessSheet {
        model: root.model
    }
}
