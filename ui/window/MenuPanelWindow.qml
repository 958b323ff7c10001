import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Window

// The tray's panel as a small window without a frame. It closes on Escape, and when it loses the
// focus.
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

    // It may have been given the focus before this comes.
    onVisibleChanged: {
        wasActive = visible && active;
        asking.attempts = 0;
    }
    onActiveChanged: {
        if (active) {
            wasActive = true;
        } else if (wasActive) {
            leaving.restart();
        }
    }

    // The focus may be nowhere for a moment, while the desktop hands it over.
    Timer {
        id: leaving

        interval: 100
        onTriggered: {
            if (!root.active) {
                root.hide();
            }
        }
    }

    // A window that opens at the same moment may take the focus before the panel has had it; its
    // loss would then never be noticed.
    Timer {
        id: asking

        property int attempts: 0

        interval: 250
        repeat: true
        running: root.visible && !root.wasActive && attempts < 40
        onTriggered: {
            ++attempts;
            root.requestActivate();
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
