import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A sheet over the window: nothing behind it can be reached while it is open. It is never higher
// than the window; what doesn't fit scrolls. Only whoever opened it closes it.
T.Popup {
    id: sheet

    required property string name
    property real ordinaryWidth: 480 // unless the window is too narrow
    property Item first: null // has the focus when the sheet opens
    property Pressable defaultButton: null // pressed by Return where no control takes that key
    readonly property real margin: 26
    readonly property real distance: 24 // least distance from the window's edges
    default property alias content: body.data
    readonly property alias scrolling: scroller
    readonly property Item focused: parent ? parent.Window.activeFocusItem : null
    property Item before: null // had the focus when this one opened
    property Item behind: null // the last item outside of all sheets that had it
    property bool ringed: false // whether `before` showed the focus ring
    property bool closing: false // fading out, it takes no keys any more

    // The user wants it closed, by Escape or a close button.
    signal dismissed()

    // Whether an item is `whole` or one of its descendants.
    function isIn(item: Item, whole: Item): bool {
        for (let i = item; i !== null; i = i.parent) {
            if (i === whole) {
                return true;
            }
        }
        return false;
    }

    function pressDefault(repeated: bool): bool {
        const pressed = defaultButton?.visible === true && !closing;
        if (pressed) {
            defaultButton.press(repeated);
        }
        return pressed;
    }

    parent: T.Overlay.overlay
    width: parent ? Math.min(ordinaryWidth, parent.width - 2 * distance) : ordinaryWidth
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    height: parent ? Math.min(implicitHeight, parent.height - 2 * distance) : implicitHeight
    implicitHeight: Math.ceil(body.implicitHeight) + 2 * margin
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose

    T.Overlay.modal: Rectangle {
        color: Theme.black(0.45)

        Behavior on opacity {
            Ease {}
        }
    }

    enter: Transition {
        Ease { property: "opacity"; from: 0; to: 1 }
    }
    exit: Transition {
        Ease { property: "opacity"; to: 0 }
    }

    onAboutToShow: {
        closing = false;
        scroller.contentY = 0;
        before = focused;
        ringed = (focused as T.Control)?.visualFocus ?? false;
        first?.forceActiveFocus(ringed ? Qt.TabFocusReason : Qt.PopupFocusReason);
    }
    onAboutToHide: {
        closing = true;
        // Another sheet may be on top and keep the focus; the one below may be gone.
        const idle = focused === null || focused === parent.Window.contentItem;
        const place = before?.visible ? before : behind;
        if (idle && place?.visible) {
            place.forceActiveFocus(ringed ? Qt.TabFocusReason : Qt.PopupFocusReason);
        }
    }
    onFocusedChanged: {
        if (focused !== null && focused !== parent.Window.contentItem && !isIn(focused, parent)) {
            behind = focused;
        }
    }

    background: SheetGround {}
    contentItem: Item {
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.name
    }

    // Where no control has the focus, the popup's own item has it.
    Connections {
        target: sheet.contentItem.parent.Keys

        function onReturnPressed(event) {
            event.accepted = sheet.pressDefault(event.isAutoRepeat);
        }
        function onEnterPressed(event) {
            event.accepted = sheet.pressDefault(event.isAutoRepeat);
        }
        function onPressed(event) {
            scroller.press(event);
        }
    }

    // As shortcuts these keys are heard wherever the focus is. Of several sheets, the topmost hears
    // them.
    Shortcut {
        sequences: ["Escape"]
        autoRepeat: false
        enabled: sheet.visible && !sheet.closing
        onActivated: sheet.dismissed()
    }

    Shortcut {
        sequences: ["Return", "Enter"]
        autoRepeat: false
        enabled: sheet.visible && !sheet.closing
                 && !sheet.isIn(sheet.focused, sheet.contentItem.parent)
        onActivated: sheet.pressDefault(false)
    }

    Scroller {
        id: scroller

        anchors.fill: parent
        air: sheet.margin
        contentHeight: sheet.implicitHeight
        T.ScrollBar.vertical: ScrollBar {}

        Column {
            id: body

            x: sheet.margin
            y: sheet.margin
            width: scroller.width - 2 * sheet.margin
            spacing: 18
        }
    }
}
