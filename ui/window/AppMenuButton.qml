import QtQuick
import QtQuick.Templates as T
import Vellomar.Design
import Vellomar.Window

// The quiet button that opens the program's menu.
T.Button {
    id: control

    property bool hovering: hovered
    property bool ringed: visualFocus
    readonly property alias menu: menu

    signal aboutAsked
    signal settingsAsked
    signal licensesAsked
    signal quitAsked

    // A click by what the template doesn't hear: Return, once however long it is held, and the
    // screen reader.
    function press(repeated: bool) {
        if (enabled && !repeated) {
            clicked();
        }
    }

    function open() {
        menu.popup(control, 0, control.height + 4);
    }

    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    implicitWidth: 28
    implicitHeight: 28
    onClicked: open()

    Keys.onReturnPressed: event => control.press(event.isAutoRepeat)
    Keys.onEnterPressed: event => control.press(event.isAutoRepeat)
    Keys.onDownPressed: event => control.press(event.isAutoRepeat)
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: qsTranslate("Texts", "Menu")
    Accessible.onPressAction: control.press(false)

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

        FocusRing {
            shown: control.ringed
            around: 14
            gap: 0
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
