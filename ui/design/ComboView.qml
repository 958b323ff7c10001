pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// The entries of a Combo's list. Only those in sight exist, and scrolling reuses them; while the
// list is closed there are none.
ListView {
    id: view

    required property var options // as the combo's
    required property string name
    readonly property real rowHeight: currentItem?.height ?? 1

    signal chosen(at: int)

    // Makes the entries, and has one of them current and in the middle.
    function fill(at: int) {
        model = Qt.binding(() => options.length);
        currentIndex = at;
        positionViewAtIndex(at, ListView.Center);
    }

    function empty() {
        model = 0;
    }

    model: 0
    clip: true
    reuseItems: true
    keyNavigationEnabled: false
    boundsBehavior: Flickable.StopAtBounds
    highlightFollowsCurrentItem: false
    onCurrentIndexChanged: positionViewAtIndex(currentIndex, ListView.Contain)
    Accessible.role: Accessible.List
    Accessible.name: name
    T.ScrollBar.vertical: ScrollBar {
        id: bar

        policy: T.ScrollBar.AlwaysOn
    }

    delegate: ComboEntry {
        required property int index

        width: view.width - (bar.visible ? bar.width : 0)
        text: view.options[index]?.label ?? ""
        current: index === view.currentIndex
        onClicked: view.chosen(index)
    }
}
