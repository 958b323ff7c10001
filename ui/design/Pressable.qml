import QtQuick
import QtQuick.Templates as T

// What all buttons have in common: mouse, Tab, Space, Return and a screen reader reach and press
// them, and a ring shows which one has the keyboard. How a button looks is its own.
T.AbstractButton {
    id: control

    // Both can be set, to see a button in that state.
    property bool hovering: hovered
    property bool ringed: visualFocus
    property real ringRadius: 0 // of the button's own corners
    property real ringGap: 3

    // A press by a key or an action of the owner's; `repeated` while the key is held.
    function press(repeated: bool) {
        actions.press(repeated);
    }

    readonly property PressActions actions: PressActions {
        button: control
    }

    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button
    Accessible.name: text

    FocusRing {
        shown: control.ringed
        around: control.ringRadius
        gap: control.ringGap
    }
}
