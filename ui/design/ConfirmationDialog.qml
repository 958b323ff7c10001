import QtQuick
import Vellomar.Design

// Asks before a step that can't be taken back. What Return, Escape and the focus offer is to leave
// it; the step itself takes a choice of its own. It is open while whoever uses it says so, like
// every sheet, and answers at most once each time: by confirmed() or dismissed().
Sheet {
    id: dialog

    required property string title
    required property string message
    required property string action  // what the destructive button says
    required property string refusal // what the other one says
    property bool answered: false

    signal confirmed

    function answer(yes: bool) {
        if (!answered && visible) {
            answered = true;
            if (yes) {
                confirmed();
            } else {
                dismissed();
            }
        }
    }

    name: title
    ordinaryWidth: 400
    first: refuse
    defaultButton: refuse
    onAboutToShow: answered = false

    Paragraph {
        objectName: "title"
        width: parent.width
        words: dialog.title
        font.pixelSize: 17
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }

    Paragraph {
        objectName: "message"
        width: parent.width
        words: dialog.message
        color: Theme.secondary
    }

    Flow {
        width: parent.width
        layoutDirection: Qt.RightToLeft
        spacing: 10

        PillButton {
            id: refuse

            objectName: "refusal"
            text: dialog.refusal
            onClicked: dialog.answer(false)
        }

        PillButton {
            objectName: "action"
            kind: PillButton.Kind.Outline
            destructive: true
            text: dialog.action
            onClicked: dialog.answer(true)
        }
    }
}
