import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A sheet over the window: nothing behind it can be reached while it is up. It is never higher than
// the window; what doesn't fit scrolls. It doesn't close by itself: the one who shows it also says
// when it goes.
T.Popup {
    id: sheet

    required property string name
    property real ordinaryWidth: 480 // where the window has the room
    property Item first: null // has the keyboard when the sheet comes up
    readonly property real margin: 26
    readonly property real distance: 24 // from the window's edges
    default property alias content: body.data
    readonly property alias scrolling: scroller
    readonly property Item focused: parent ? parent.Window.activeFocusItem : null
    property Item before: null // had the keyboard when this came up
    property Item behind: null // the last one outside of all sheets that had it
    property bool ringed: false // whether the keyboard came in with its ring

    // By Escape or a cross: the person wants it closed.
    signal dismissed()

    function isBehind(item: Item): bool {
        for (let i = item; i !== null; i = i.parent) {
            if (i === parent) {
                return false;
            }
        }
        return item !== null && item !== parent.Window.contentItem;
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
        scroller.contentY = 0;
        before = focused;
        ringed = (focused as T.Control)?.visualFocus ?? false;
        first?.forceActiveFocus(ringed ? Qt.TabFocusReason : Qt.PopupFocusReason);
    }
    onAboutToHide: {
        // Another sheet may be on top and keep the keyboard; the one below may be gone.
        const idle = focused === null || focused === parent.Window.contentItem;
        const place = before?.visible ? before : behind;
        if (idle && place?.visible) {
            place.forceActiveFocus(ringed ? Qt.TabFocusReason : Qt.PopupFocusReason);
        }
    }
    onFocusedChanged: {
        if (isBehind(focused)) {
            behind = focused;
        }
    }

    background: SheetGround {}
    contentItem: Item {
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.name
    }

    // Where no control has the keyboard, the popup's own item has it.
    Connections {
        target: sheet.contentItem.parent.Keys
        function onEscapePressed() {
            sheet.dismissed();
        }
        function onPressed(event) {
            scroller.press(event);
        }
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
