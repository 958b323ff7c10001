import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// One choice of many, in a list that opens. It shows the selection that it is bound to and asks for
// a different one by chosen().
//
// The template gives it the role, the mouse and the focus. The template's own model stays empty:
// its current index would follow the user instead of the selection. While the list is open, the
// focus stays here.
T.ComboBox {
    id: control

    // A list of {value, label}.
    required property var options
    required property var selection
    required property string name
    readonly property int index: options.findIndex(o => o.value === selection) // -1: none of them
    readonly property ComboList list: popup as ComboList

    // Both can be set, to see a combo in that state.
    property bool hovering: hovered
    property bool ringed: visualFocus

    signal chosen(value: var)

    // Opens the list; `repeated` while a key is held.
    function press(repeated: bool) {
        if (enabled && !repeated && options.length > 0) {
            list.open();
        }
    }

    function choose(at: int) {
        list.close();
        if (at >= 0 && at < options.length && at !== index) {
            chosen(options[at].value);
        }
    }

    function labelAt(at: int): string {
        return options[at]?.label ?? "";
    }

    displayText: labelAt(index)
    leftPadding: 11
    rightPadding: 32
    topPadding: 8
    bottomPadding: 8
    implicitWidth: 220
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    font.family: Theme.textFamily
    font.pixelSize: 13
    opacity: enabled ? 1 : 0.38
    onVisibleChanged: list.close()
    onEnabledChanged: list.close()

    // Takes Escape before the sheet around it does.
    Keys.onShortcutOverride: event => {
        event.accepted = list.visible && event.key === Qt.Key_Escape;
    }
    Keys.onPressed: event => {
        if (list.visible) {
            list.handle(event);
        } else if (list.isTyped(event)) {
            press(false);
            list.type(event.text);
            event.accepted = true;
        } else if ([Qt.Key_Up, Qt.Key_Down, Qt.Key_Space, Qt.Key_Return,
                    Qt.Key_Enter].includes(event.key)) {
            press(event.isAutoRepeat);
            event.accepted = true;
        }
    }
    // The press has done it already; the template would do it again at the release.
    Keys.onReleased: event => {
        event.accepted = [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter].includes(event.key);
    }
    Accessible.role: Accessible.ComboBox
    Accessible.name: {
        const label = list.visible ? labelAt(list.current) : displayText;
        return label === "" ? name : qsTranslate("Texts", "%1: %2").arg(name).arg(label);
    }
    Accessible.onPressAction: control.press(false)

    contentItem: Label {
        text: control.displayText
        font: control.font
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    background: FieldSurface {
        brightness: control.enabled && control.hovering ? 0.03 : 0

        Symbol {
            x: parent.width - 17 - width / 2
            y: (parent.height - height) / 2
            name: "chevron.down"
            points: 10
            weight: Font.DemiBold
            color: Theme.secondary
        }

        FocusRing {
            shown: control.ringed
            around: 9
            gap: 1
        }
    }

    popup: ComboList {
        width: control.width
        y: control.height + 4
        options: control.options
        index: control.index
        name: control.name
        onChosen: at => control.choose(at)
    }
}
