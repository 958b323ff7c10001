import QtQuick
import Vellomar.Design

// A short text with a button that removes it. A text wider than `widest` is elided in the middle;
// a tooltip has all of it. One with a `fault` is marked, and the tooltip says what is wrong with it.
FocusScope {
    id: root

    required property string text
    required property string help // of the button
    property real widest: 320
    property string fault: "" // what is wrong with the text
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

    implicitWidth: Math.min(widest, Math.ceil(words.x + words.implicitWidth) + 30)
    implicitHeight: 28
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.ListItem
    Accessible.name: words.text
    Accessible.description: fault

    Surface {
        objectName: "ground"
        anchors.fill: parent
        radius: height / 2
        fill: Theme.flat(root.fault !== "" ? Theme.faded(Theme.coral, 0.14) : Theme.white(0.08))
        rim: Theme.flat(root.fault !== "" ? Theme.coral : Theme.white(0.2))
        rimWidth: 1
    }

    Symbol {
        id: sign

        objectName: "sign"
        x: 9
        y: (parent.height - height) / 2
        visible: root.fault !== ""
        name: "exclamationmark.circle.fill"
        points: 12
        color: Theme.coral
    }

    OneLine {
        id: words

        objectName: "words"
        x: sign.visible ? sign.x + sign.width + 5 : 12
        y: (parent.height - height) / 2
        width: root.width - x - 30
        line: root.text
        font.pixelSize: 12
        elide: Text.ElideMiddle
        horizontalAlignment: Text.AlignLeft // of a text from right to left, too
    }

    HoverHandler {
        id: pointer
    }

    Tip {
        objectName: "tip"
        visible: pointer.hovered && !cross.hovered && text !== ""
        text: {
            const whole = words.truncated ? root.text : "";
            return whole !== "" && root.fault !== "" ? whole + "\n" + root.fault : whole + root.fault;
        }
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
