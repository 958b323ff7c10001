import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// Shows a key, which can then be selected. Hidden, its text is 24 bullets, whatever the key: a
// field with a mask would still give the key to a screen reader.
T.TextArea {
    id: control

    required property string key
    required property string name
    property bool revealed: false
    property bool ringed: activeFocus && revealed

    text: revealed ? key : "\u2022".repeat(24)
    readOnly: true
    selectByMouse: revealed
    selectByKeyboard: revealed
    activeFocusOnPress: revealed
    activeFocusOnTab: revealed || activeFocus
    onSelectedTextChanged: {
        if (!revealed) {
            deselect(); // "select all" works even so
        }
    }
    wrapMode: TextEdit.WrapAnywhere
    textFormat: TextEdit.PlainText
    leftPadding: 11
    rightPadding: 11
    topPadding: 8
    bottomPadding: 8
    implicitWidth: 320
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding
    font.family: Theme.monospacedFamily
    font.pixelSize: 13
    color: Theme.text
    selectionColor: Theme.amber
    selectedTextColor: Theme.ink
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.EditableText
    Accessible.name: name
    Accessible.readOnly: true
    Accessible.selectableText: revealed

    background: FieldSurface {
        FocusRing {
            shown: control.ringed
            around: 9
            gap: 1
        }
    }
}
