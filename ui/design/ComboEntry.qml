import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// One entry in the list of a Combo. It never has the focus.
T.ItemDelegate {
    id: entry

    required property bool current

    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    horizontalPadding: 8
    verticalPadding: 6
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    font.family: Theme.textFamily
    font.pixelSize: 13
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: current
    Accessible.onPressAction: entry.clicked()

    contentItem: Label {
        text: entry.text
        font: entry.font
        color: entry.current ? Theme.ink : Theme.text
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    background: Item {
        Surface {
            anchors.fill: parent
            visible: entry.current
            radius: 6
            fill: Theme.amberGradient
        }

        Surface {
            anchors.fill: parent
            visible: entry.hovered && !entry.current
            radius: 6
            fill: Theme.flat(Theme.white(0.08))
        }
    }
}
