import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A field of one line. Line breaks, which a pasted text may have, never get into it. A secure one
// shows dots instead of what is typed, except while its eye is held. It has no undo: what was
// deleted from it is gone.
T.TextField {
    id: control

    property string name: placeholderText
    property bool secure: false
    property bool ringed: activeFocus
    property bool digitsOnly: false
    // Characters that are left out of whatever is typed or pasted.
    readonly property var unwanted: digitsOnly ? /[^0-9]/g
                                               : /[\0\n\r\v\f\u0085\u2028\u2029]/g
    property bool revealing: eye.held

    property bool cleaning: false

    // The user has changed the text, which is as it stays by now: textEdited comes also before.
    signal typed(text: string)

    // Without an assignment to `text`, which would end its binding.
    function clean() {
        const kept = text.replace(unwanted, "");
        if (kept !== text) {
            const cursor = text.slice(0, cursorPosition).replace(unwanted, "").length;
            cleaning = true;
            remove(0, length);
            insert(0, kept);
            cursorPosition = cursor;
            cleaning = false;
        }
    }

    onTextEdited: {
        if (!cleaning) {
            clean();
            typed(text);
        }
    }
    Keys.onPressed: event => {
        event.accepted = secure && (event.matches(StandardKey.Undo)
                                    || event.matches(StandardKey.Redo));
    }

    echoMode: secure ? TextInput.Password : TextInput.Normal
    inputMethodHints: secure ? Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                               | Qt.ImhNoAutoUppercase
                             : digitsOnly ? Qt.ImhDigitsOnly : Qt.ImhNone
    passwordMaskDelay: 0
    activeFocusOnTab: true
    leftPadding: 11
    rightPadding: secure ? 11 + eye.width : 11
    topPadding: 8
    bottomPadding: 8
    implicitWidth: 220
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding
    font.family: Theme.textFamily
    font.pixelSize: 13
    color: revealing ? Theme.white(0) : Theme.text
    placeholderTextColor: Theme.tertiary
    selectionColor: Theme.amber
    selectedTextColor: Theme.ink
    selectByMouse: true
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.EditableText
    Accessible.name: name
    // Qt gives a password field no accessible name, so its description has it.
    Accessible.description: echoMode !== TextInput.Normal ? name
                          : text === "" && placeholderText !== name ? placeholderText : ""
    Accessible.passwordEdit: echoMode !== TextInput.Normal

    Label {
        x: control.leftPadding
        y: control.topPadding
        width: control.width - control.leftPadding - control.rightPadding
        visible: control.text === "" && control.preeditText === ""
        text: control.placeholderText
        font: control.font
        color: control.placeholderTextColor
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    // What the eye shows is drawn over the dots. The field itself goes on hiding it, so that it can
    // be neither selected and copied nor read by a screen reader.
    Item {
        x: control.leftPadding
        y: control.topPadding
        width: control.width - control.leftPadding - control.rightPadding
        height: control.height - control.topPadding - control.bottomPadding
        visible: control.revealing && control.text !== ""
        clip: true

        TextMetrics {
            id: before
            font: control.font
            text: control.revealing ? control.text.slice(0, control.cursorPosition) : ""
        }

        Label {
            objectName: "revealed"
            // The end of what is before the cursor stays in sight.
            x: -Math.max(0, before.advanceWidth - parent.width)
            text: control.revealing ? control.text : ""
            font: control.font
            Accessible.ignored: true
        }
    }

    RevealButton {
        id: eye

        objectName: "eye"
        anchors.right: parent.right
        height: parent.height
        visible: control.secure
        enabled: control.text !== ""
        text: qsTranslate("Texts", "Mostra: %1").arg(control.name)
    }

    background: FieldSurface {
        FocusRing {
            shown: control.ringed
            around: 9
            gap: 1
        }
    }
}
