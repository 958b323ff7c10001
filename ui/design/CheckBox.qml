import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A box to check. Its text is its name for the screen reader; the row that it stands in shows it.
T.CheckBox {
    id: control

    property bool ringed: visualFocus

    // What a click does, for keys and screen readers that the template doesn't hear in full.
    function press() {
        toggle();
        toggled();
        clicked();
    }

    focusPolicy: Qt.TabFocus
    implicitWidth: 17
    implicitHeight: 17
    opacity: enabled ? 1 : 0.38

    Keys.onReturnPressed: control.press()
    Keys.onEnterPressed: control.press()
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: control.press()
    Accessible.onToggleAction: control.press()

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
                anchors.centerIn: parent
                name: "checkmark"
                points: 9
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
