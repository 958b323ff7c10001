import QtQuick
import Vellomar.Design

// A short text with a button that removes it. A text wider than `widest` is elided in the middle;
// a tooltip has all of it.
FocusScope {
    id: root

    required property string text
    required property string help // of the button
    property real widest: 320
    property alias ringed: cross.ringed
    property alias hovering: cross.hovering
    readonly property alias closing: cross

    // The user wants it removed: by a press of the button, or by Delete or Backspace on it.
    signal removed

    // Moves the focus on before the chip, which has it, is destroyed.
    function remove(repeated: bool) {
        if (repeated || !enabled) {
            return;
        }
        if (cross.activeFocus) {
            cross.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason);
        }
        removed();
    }

    implicitWidth: Math.min(widest, Math.ceil(words.implicitWidth) + 12 + 30)
    implicitHeight: 28
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.ListItem
    Accessible.name: text

    Surface {
        anchors.fill: parent
        radius: height / 2
        fill: Theme.flat(Theme.white(0.08))
        rim: Theme.flat(Theme.white(0.2))
        rimWidth: 1
    }

    Label {
        id: words

        objectName: "words"
        x: 12
        y: (parent.height - height) / 2
        width: root.width - x - 30
        text: root.text
        font.pixelSize: 12
        elide: Text.ElideMiddle
        maximumLineCount: 1
        Accessible.ignored: true

        HoverHandler {
            id: pointer
        }
    }

    Tip {
        visible: pointer.hovered && words.truncated
        text: root.text
    }

    Pressable {
        id: cross

        objectName: "cross"
        focus: true
        x: root.width - width - 5
        y: (root.height - height) / 2
        width: 20
        height: 20
        ringRadius: 10
        ringGap: 0
        Accessible.name: qsTranslate("Texts", "%1: %2").arg(root.help).arg(root.text)
        onClicked: root.remove(false)
        Keys.onDeletePressed: event => root.remove(event.isAutoRepeat)
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Backspace) {
                root.remove(event.isAutoRepeat);
                event.accepted = true;
            }
        }

        contentItem: Item {
            Symbol {
                anchors.centerIn: parent
                anchors.alignWhenCentered: false
                name: "xmark"
                points: 9
                weight: Font.DemiBold
                color: root.enabled && cross.hovering ? Theme.text : Theme.secondary
            }
        }

        Tip {
            visible: cross.hovered
            text: root.help
        }
    }
}
