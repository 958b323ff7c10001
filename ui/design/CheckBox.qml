import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A box to check. Its text is its name for the screen reader; the row that it stands in shows it.
T.CheckBox {
    id: control

    property bool ringed: visualFocus

    // What a click does, for what the template doesn't hear in full: Return, once however long it
    // is held, and the screen reader, which finds disabled controls too.
    function press(repeated: bool) {
        if (enabled && !repeated) {
            toggle();
            toggled();
            clicked();
        }
    }

    focusPolicy: Qt.TabFocus
    implicitWidth: 17
    implicitHeight: 17
    opacity: enabled ? 1 : 0.38

    Keys.onReturnPressed: event => control.press(event.isAutoRepeat)
    Keys.onEnterPressed: event => control.press(event.isAutoRepeat)
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: control.press(false)
    Accessible.onToggleAction: control.press(false)

    indicator: Item {
        implicitWidth: 17
        implicitHeight: 17

        Surface {
            anchors.fill: parent
            visible: !control.checked
            radius: 5
            fill: Theme.flat(Theme.black(0.22))
            rim: Theme.flat(Theme.white(0.4))
            rimWidth: 1.3
        }

        Surface {
            anchors.fill: parent
            visible: control.checked
            radius: 5
            fill: Theme.amberGradient

            Symbol {
                objectName: "mark"
                anchors.centerIn: parent
                anchors.alignWhenCentered: false
                name: "checkmark"
                points: 12 // the drawing leaves a third of its square empty
                weight: Font.Black
                color: Theme.ink
            }
        }

        FocusRing {
            shown: control.ringed
            around: 5
            gap: 2.5
        }
    }
}
