import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A small round button with a symbol; its help text is its name and its tooltip.
T.Button {
    id: control

    required property string symbol
    required property string help
    property bool hovering: hovered
    property bool ringed: visualFocus
    property real glow: enabled && hovering ? 1 : 0

    Behavior on glow {
        Ease { time: 100 }
    }

    // A click by what the template doesn't hear: Return, once however long it is held, and the
    // screen reader, which finds disabled buttons too.
    function press(repeated: bool) {
        if (enabled && !repeated) {
            clicked();
        }
    }

    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    implicitWidth: 28
    implicitHeight: 28
    opacity: enabled ? 1 : 0.38
    scale: enabled && down ? 0.97 : 1

    Behavior on scale {
        Ease {}
    }

    Keys.onReturnPressed: event => control.press(event.isAutoRepeat)
    Keys.onEnterPressed: event => control.press(event.isAutoRepeat)
    Accessible.role: Accessible.Button
    Accessible.onPressAction: control.press(false)
    Accessible.name: help

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            anchors.alignWhenCentered: false
            name: control.symbol
            points: 12
            weight: Font.DemiBold
            color: Theme.text
        }
    }

    background: Surface {
        radius: 14
        fill: Theme.flat(Theme.white(0.08))
        brightness: 0.02 * control.glow
        rim: Theme.rim
        rimWidth: 1
        shadowColor: Theme.black(0.2)
        shadowRadius: 2

        FocusRing {
            shown: control.ringed
            around: 14
        }
    }

    Tip {
        parent: control
        visible: control.hovered && control.help !== ""
        text: control.help
    }
}
