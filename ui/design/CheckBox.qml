import QtQuick
import Vellomar.Design

// A check box. Its text is its name for a screen reader only; CheckRow shows a text beside it.
Checkable {
    id: control

    ringRadius: 5
    ringGap: 2.5
    implicitWidth: 17
    implicitHeight: 17
    opacity: enabled ? 1 : 0.38

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
                points: 12 // a third of the drawing's square is empty
                weight: Font.Black
                color: Theme.ink
            }
        }
    }
}
