import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A sheet over the window: nothing behind it can be reached while it is up, Escape closes it.
T.Popup {
    id: sheet

    required property string name

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    padding: 26
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Rectangle {
        color: Theme.black(0.45)
    }

    enter: Transition {
        Ease { property: "opacity"; from: 0; to: 1 }
    }
    exit: Transition {
        Ease { property: "opacity"; to: 0 }
    }

    background: SheetGround {}
    contentItem: Column {
        spacing: 18
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.name
    }
}
