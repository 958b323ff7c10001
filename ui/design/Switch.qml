import QtQuick
import Vellomar.Design

// On or off. Its text is its name for a screen reader only.
Checkable {
    id: control

    readonly property real knobX: checked !== mirrored ? 22 : 3
    // A disabled switch fades as a whole: the part of the track under the knob isn't drawn.
    readonly property rect covered: enabled ? Qt.rect(0, 0, 0, 0) : Qt.rect(knobX, 3, 19, 19)

    ringRadius: 12.5
    implicitWidth: 44
    implicitHeight: 25
    opacity: enabled ? 1 : 0.38

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
            x: control.knobX
            y: 3
            width: 19
            height: 19
            radius: 9.5
            fill: Theme.knobGradient
            shadowColor: Theme.black(0.35)
            shadowRadius: 2
            shadowOffset: Qt.point(0, 1)

            Behavior on x {
                Spring {
                    response: 0.28
                    damping: 0.78
                }
            }
        }
    }
}
