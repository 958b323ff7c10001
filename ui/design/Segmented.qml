pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

// One choice of a few, all in sight. It shows the selection that it is given and asks for another
// by chosen(); whoever uses it decides.
//
// A plain item: a control without a role of its own would overrule the one given here.
Item {
    id: control

    // A list of {value, label}.
    required property var options
    required property var selection
    required property string name

    signal chosen(value: var)

    readonly property alias contentItem: row

    // What the keyboard reaches: the selected option, or the first if none is.
    readonly property int current: Math.max(0, options.findIndex(o => o.value === selection))

    function choose(index: int) {
        if (index >= 0 && index < options.length) {
            const value = options[index].value;
            if (value !== selection) {
                chosen(value);
            }
        }
    }

    function step(by: int) {
        const next = current + by;
        if (next >= 0 && next < options.length) {
            (row.children[next] as Item).forceActiveFocus(Qt.TabFocusReason);
            choose(next);
        }
    }

    implicitWidth: row.implicitWidth + 6
    implicitHeight: row.implicitHeight + 6
    opacity: enabled ? 1 : 0.38
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Surface {
        anchors.fill: parent
        radius: height / 2
        fill: Theme.flat(Theme.black(0.24))
        rim: Theme.vertical(Theme.black(0.2), Theme.white(0.1))
        rimWidth: 1
    }

    Row {
        id: row

        x: 3
        y: 3
        spacing: 2

        Repeater {
            model: control.options

            SegmentedOption {
                required property var modelData
                required property int index

                text: modelData.label
                selected: modelData.value === control.selection
                activeFocusOnTab: index === control.current || activeFocus
                onClicked: control.choose(index)
                Keys.onLeftPressed: control.step(-1)
                Keys.onUpPressed: control.step(-1)
                Keys.onRightPressed: control.step(1)
                Keys.onDownPressed: control.step(1)
            }
        }
    }
}
