import QtQuick
import Vellomar.Design

// Asks before an action that can't be undone. Return, Escape and the initial focus refuse; only the
// action's own button confirms. Like every sheet it is opened and closed by its user. Each time it
// is opened its buttons answer once, by confirmed() or dismissed().
Sheet {
    id: dialog

    required property string title
    required property string message
    required property string action  // text of the button that confirms
    required property string refusal // text of the one that refuses
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
    onDismissed: answered = true

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
