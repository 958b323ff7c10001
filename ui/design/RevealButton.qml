import QtQuick
import Vellomar.Design

// The eye of a secure field: it is held to see what was typed, by the mouse or by Space, and lets go
// with the keyboard, the pointer or the window.
Pressable {
    id: control

    property bool spaceHeld: false
    readonly property bool held: enabled && Window.active && (pressed || spaceHeld)

    width: 34
    ringRadius: 9
    ringGap: -2
    opacity: enabled ? 1 : 0.38

    // By the template's own handling, each repetition of a held key is a release.
    Keys.onSpacePressed: spaceHeld = true
    Keys.onReleased: event => {
        if (event.key === Qt.Key_Space) {
            spaceHeld = event.isAutoRepeat;
            event.accepted = true;
        }
    }
    onActiveFocusChanged: spaceHeld = false
    onEnabledChanged: spaceHeld = false

    contentItem: Item {
        Symbol {
            objectName: "symbol"
            anchors.centerIn: parent
            name: "eye"
            points: 13
            color: control.held || control.hovering ? Theme.text : Theme.secondary
        }
    }
}
