import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// One option of a Segmented.
T.RadioButton {
    id: option

    required property bool selected
    readonly property real labelWidth: (contentItem as Label).implicitWidth
    property bool ringed: visualFocus

    readonly property PressActions actions: PressActions {
        button: option
    }

    // The template sets `checked` at a click, so the binding is made again.
    checked: selected
    autoExclusive: false
    onClicked: checked = Qt.binding(() => option.selected)
    hoverEnabled: true
    // Too narrow, it gives up its padding before its label is cut.
    horizontalPadding: Math.max(5, Math.min(12, Math.floor((width - labelWidth) / 2)))
    verticalPadding: 6
    implicitWidth: labelWidth + 24
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    font.family: Theme.textFamily
    font.pixelSize: 12
    font.weight: Font.DemiBold

    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: selected

    contentItem: Label {
        text: option.text
        font: option.font
        color: option.selected ? Theme.ink : Theme.label
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true

        Behavior on color {
            ColorAnimation { duration: Motion.time(150) }
        }
    }

    background: Item {
        Surface {
            objectName: "chosen"
            anchors.fill: parent
            radius: height / 2
            fill: Theme.amberGradient
            shadowColor: Theme.black(0.3)
            shadowRadius: 3
            shadowOffset: Qt.point(0, 2)
            opacity: option.selected ? 1 : 0

            Behavior on opacity {
                Ease {}
            }
        }

        Surface {
            anchors.fill: parent
            visible: option.hovered && !option.selected
            radius: height / 2
            fill: Theme.flat(Theme.white(0.05))
        }

        FocusRing {
            shown: option.ringed
            around: parent.height / 2
            gap: 2
        }
    }
}
