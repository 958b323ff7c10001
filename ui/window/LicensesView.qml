pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vellomar.Design
import Vellomar.Window

// One notice, and the choice among all: buttons for the two tools, a menu for the other parts.
Item {
    id: root

    property string selected: "restic"
    readonly property var names: Notices.names()
    readonly property var tools: names.slice(0, 2)
    readonly property var others: names.slice(2)

    Accessible.role: Accessible.Pane
    Accessible.name: qsTranslate("Texts", "Licenze open source")
    onSelectedChanged: scrolling.contentY = 0

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    Segmented {
        id: segmented

        objectName: "tools"
        x: 20
        y: 20
        name: qsTranslate("Texts", "Licenze open source")
        options: root.tools.map(name => ({value: name, label: name}))
        selection: root.selected
        onChosen: value => root.selected = value
    }

    PillButton {
        id: more

        readonly property bool used: root.others.includes(root.selected)

        objectName: "others"
        anchors.right: parent.right
        anchors.rightMargin: 20
        anchors.verticalCenter: segmented.verticalCenter
        visible: root.others.length > 0
        kind: used ? PillButton.Kind.Primary : PillButton.Kind.Outline
        rightPadding: 34
        text: used ? root.selected : qsTranslate("Texts", "Altre licenze")
        Accessible.description: used ? qsTranslate("Texts", "Altre licenze") : ""
        Keys.onDownPressed: event => more.press(event.isAutoRepeat)
        onClicked: menu.popup(more, more.width - menu.width, more.height + 4)

        Symbol {
            anchors.right: parent.right
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.down"
            points: 10
            weight: Font.DemiBold
            color: more.used ? Theme.ink : Theme.label
        }

        Menu {
            id: menu

            objectName: "menu"
            title: qsTranslate("Texts", "Altre licenze")

            Repeater {
                model: root.others

                MenuItem {
                    required property string modelData

                    text: modelData
                    onTriggered: root.selected = modelData
                }
            }
        }
    }

    Surface {
        objectName: "ground"
        anchors.fill: scrolling
        radius: 11
        continuous: true
        fill: Theme.flat(Theme.black(0.22))
    }

    Scroller {
        id: scrolling

        objectName: "scrolling"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: segmented.bottom
        anchors.bottom: parent.bottom
        anchors.margins: 20
        anchors.topMargin: 14
        contentHeight: text.height
        clip: true
        T.ScrollBar.vertical: ScrollBar {
            objectName: "bar"
            policy: T.ScrollBar.AlwaysOn
        }

        TextEdit {
            id: text

            objectName: "text"
            width: parent.width
            padding: 14
            text: Notices.text(root.selected)
            textFormat: TextEdit.PlainText
            readOnly: true
            selectByMouse: true
            selectByKeyboard: true
            activeFocusOnTab: true
            wrapMode: TextEdit.Wrap
            font.family: Theme.monospacedFamily
            font.pixelSize: 11
            color: Theme.text
            selectionColor: Theme.amber
            selectedTextColor: Theme.ink
            Accessible.role: Accessible.EditableText
            Accessible.name: root.selected
            Accessible.readOnly: true
            Accessible.multiLine: true

            // The text has no visible caret, so the keys that would move one scroll.
            Keys.onPressed: event => scrolling.press(event)
        }
    }
}
