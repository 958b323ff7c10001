import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A field of one line. A secure one shows dots instead of what is typed.
T.TextField {
    id: control

    property string name: placeholderText
    property bool secure: false
    property bool ringed: activeFocus

    echoMode: secure ? TextInput.Password : TextInput.Normal
    inputMethodHints: secure ? Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                               | Qt.ImhNoAutoUppercase : Qt.ImhNone
    passwordMaskDelay: 0
    activeFocusOnTab: true
    leftPadding: 11
    rightPadding: 11
    topPadding: 8
    bottomPadding: 8
    implicitWidth: 220
    implicitHeight: Math.ceil(contentHeight) + topPadding + bottomPadding
    font.family: Theme.textFamily
    font.pixelSize: 13
    color: Theme.text
    placeholderTextColor: Theme.tertiary
    selectionColor: Theme.amber
    selectedTextColor: Theme.ink
    selectByMouse: true
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.EditableText
    Accessible.name: name
    // Qt gives a password field no accessible name, so its description has it.
    Accessible.description: echoMode !== TextInput.Normal ? name : ""
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

    background: FieldSurface {
        FocusRing {
            shown: control.ringed
            around: 9
            gap: 1
        }
    }
}
