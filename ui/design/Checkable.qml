import QtQuick
import QtQuick.Templates as T

// What all controls that can be checked have in common. Such a control shows `checked` and never
// changes it: a press only asks for the other state, and whoever binds `checked` decides.
T.CheckBox {
    id: control

    // Both can be set, to see a control in that state.
    property bool hovering: hovered
    property bool ringed: visualFocus
    property real ringRadius: 0 // of the control's own corners
    property real ringGap: 3

    // The user wants it checked, or not.
    signal asked(checked: bool)

    // A press by a key or an action of the owner's; `repeated` while the key is held.
    function press(repeated: bool) {
        actions.press(repeated);
    }

    readonly property PressActions actions: PressActions {
        button: control
    }

    nextCheckState: () => checkState // what the template itself makes of a press: nothing
    onClicked: asked(!checked)
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked

    FocusRing {
        shown: control.ringed
        around: control.ringRadius
        gap: control.ringGap
    }
}
