import QtQuick
import Vellomar.Design
import Vellomar.Window

// The quiet button that opens the program's menu.
Pressable {
    id: control

    readonly property alias menu: menu

    signal aboutAsked
    signal settingsAsked
    signal licensesAsked
    signal quitAsked

    function open() {
        menu.popup(control, 0, control.height + 4);
    }

    ringRadius: 14
    ringGap: 0
    implicitWidth: 28
    implicitHeight: 28
    onClicked: open()

    Keys.onDownPressed: event => control.press(event.isAutoRepeat)
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: qsTranslate("Texts", "Menu")

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            anchors.alignWhenCentered: false
            name: "ellipsis"
            points: 13
            color: Theme.white(control.hovering || control.ringed || menu.visible ? 0.95 : 0.55)
        }
    }

    background: Surface {
        radius: 14
        fill: Theme.flat(Theme.white(0.08))
        opacity: control.hovering || menu.visible ? 1 : 0

        Behavior on opacity {
            Ease {}
        }
    }

    AppMenu {
        id: menu

        onAboutAsked: control.aboutAsked()
        onSettingsAsked: control.settingsAsked()
        onLicensesAsked: control.licensesAsked()
        onQuitAsked: control.quitAsked()
    }
}
