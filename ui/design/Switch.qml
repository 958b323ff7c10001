import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// On or off. Its text is its name for the screen reader; the row that it stands in shows it.
T.Switch {
    id: control

    property bool ringed: visualFocus
    // Disabled, it fades as a whole: what the knob covers isn't there.
    readonly property rect covered: enabled ? Qt.rect(0, 0, 0, 0)
                                            : Qt.rect(3 + visualPosition * 19, 3, 19, 19)

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
    implicitWidth: 44
    implicitHeight: 25
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
        implicitWidth: 44
        implicitHeight: 25

        Surface {
            anchors.fill: parent
            visible: control.enabled || !control.checked
            hole: control.covered
            radius: 12.5
            fill: Theme.flat(Theme.black(0.28))
            rim: Theme.vertical(Theme.black(0.25), Theme.white(0.12))
            rimWidth: 1
        }

        Surface {
            anchors.fill: parent
            hole: control.covered
            radius: 12.5
            fill: Theme.amberGradient
            opacity: control.checked ? 1 : 0

            Behavior on opacity {
                Ease {}
            }
        }

        Surface {
            objectName: "knob"
            x: 3 + control.visualPosition * 19
            y: 3
            width: 19
            height: 19
            radius: 9.5
            fill: Theme.knobGradient
            shadowColor: Theme.black(0.35)
            shadowRadius: 2
            shadowOffset: Qt.point(0, 1)

            Behavior on x {
                enabled: !control.pressed
                Spring {
                    response: 0.28
                    damping: 0.78
                }
            }
        }

        FocusRing {
            shown: control.ringed
            around: 12.5
        }
    }
}
