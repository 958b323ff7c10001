import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A thin scroll bar that shows while its content scrolls or the pointer is on it.
T.ScrollBar {
    id: control

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 3
    minimumSize: 0.08
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1
    Accessible.ignored: true // a screen reader scrolls the content itself
    contentItem: Surface {
        implicitWidth: 5
        implicitHeight: 5
        radius: 2.5
        fill: Theme.flat(Theme.white(control.pressed ? 0.5 : control.hovered ? 0.4 : 0.26))
        opacity: control.policy === T.ScrollBar.AlwaysOn || control.active ? 1 : 0

        Behavior on opacity {
            Ease { time: 300 }
        }
    }
}
