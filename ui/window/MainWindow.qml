import QtQuick
import Vellomar.Design
import Vellomar.Glance

// The window. Closing it only hides it; its owner decides when the program ends.
Window {
    id: root

    required property AppModel model
    required property Summary summary

    signal licensesAsked
    signal aboutAsked
    signal quitAsked

    // The state to come back in: what it was when last visible.
    property int seenAs: Window.Windowed

    onVisibilityChanged: {
        if (visibility !== Window.Minimized && visibility !== Window.Hidden) {
            seenAs = visibility;
        }
    }
    onVisibleChanged: {
        if (!visible) {
            model.becomeHidden();
        }
    }

    // Brings the window up from wherever it is.
    function comeUp() {
        if (visibility === Window.Minimized || visibility === Window.Hidden) {
            visibility = seenAs;
        }
        raise();
        requestActivate();
    }

    function goToSettings() {
        comeUp();
        model.section = AppModel.Section.Settings;
    }

    title: "Vellomar"
    width: 1060
    height: 720
    minimumWidth: 980
    minimumHeight: 660
    color: Theme.ground

    // Here and not in the view, where an open sheet would keep them from the window.
    Shortcut {
        sequences: ["Ctrl+,"]
        context: Qt.ApplicationShortcut
        onActivated: root.goToSettings()
    }

    Shortcut {
        sequences: ["Ctrl+Q"]
        context: Qt.ApplicationShortcut
        onActivated: root.quitAsked()
    }

    RootView {
        anchors.fill: parent
        model: root.model
        summary: root.summary
        onAboutAsked: root.aboutAsked()
        onSettingsAsked: root.goToSettings()
        onLicensesAsked: root.licensesAsked()
        onQuitAsked: root.quitAsked()
    }
}
