pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

// One choice of a few, all in sight. It shows the selection that it is bound to and asks for a
// different one by chosen(). Narrower than its labels need, it shortens the longest of them.
//
// A plain item: Qt's template of a control would report its own role to screen readers.
Item {
    id: control

    // A list of {value, label}.
    required property var options
    required property var selection
    required property string name

    signal chosen(value: var)

    readonly property alias contentItem: row

    // What Tab reaches: the selected option, or the first if none is.
    readonly property int current: Math.max(0, options.findIndex(o => o.value === selection))

    // The width that each option needs.
    readonly property var wanted: {
        const list = [];
        for (let i = 0; i < repeater.count; ++i) {
            list.push(repeater.itemAt(i)?.implicitWidth ?? 0);
        }
        return list;
    }
    // The width that each gets. Where there is no room for all, the widest share what the others
    // leave.
    readonly property var widths: {
        let room = Math.max(0, width - 6 - row.spacing * Math.max(0, wanted.length - 1));
        let left = wanted.length;
        let most = Infinity;
        for (const one of wanted.slice().sort((a, b) => a - b)) {
            if (one * left > room) {
                most = room / left;
                break;
            }
            room -= one;
            --left;
        }
        return wanted.map(one => Math.min(one, most));
    }

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

    implicitWidth: wanted.reduce((sum, one) => sum + one,
                                 6 + row.spacing * Math.max(0, wanted.length - 1))
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
            id: repeater

            model: control.options

            SegmentedOption {
                required property var modelData
                required property int index

                width: control.widths[index] ?? implicitWidth
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
