import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Window

// The tray's panel as a small window without a frame. It goes on Escape, and when the person turns
// to something else.
Window {
    id: root

    required property AppModel model
    required property Summary summary

    signal windowAsked
    signal quitAsked

    property bool wasActive: false

    title: "Vellomar"
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    width: 330
    height: panel.implicitHeight
    color: Theme.ground

    onVisibleChanged: wasActive = false
    onActiveChanged: {
        if (active) {
            wasActive = true;
        } else if (wasActive) {
            hide();
        }
    }

    Shortcut {
        sequences: ["Escape"]
        onActivated: root.hide()
    }

    MenuPanel {
        id: panel

        width: root.width
        height: root.height
        model: root.model
        summary: root.summary
        onWindowAsked: root.windowAsked()
        onQuitAsked: root.quitAsked()
    }
}
