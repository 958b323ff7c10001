import QtQuick
import QtQuick.Templates as T

// A page of the window: it scrolls, under its header stands its content, at the leading side.
Item {
    id: root

    required property string title
    required property string subtitle
    default property alias content: body.data
    readonly property alias scrolling: flickable

    Accessible.role: Accessible.Pane
    Accessible.name: title

    // What the keyboard goes to is brought into sight.
    function reveal(item: Item) {
        if (item === null || !flickable.holds(item)) {
            return;
        }
        const place = item.mapToItem(column, 0, 0);
        const top = place.y - 12;
        const bottom = place.y + item.height + 12;
        if (top < flickable.contentY) {
            flickable.contentY = Math.max(0, top);
        } else if (bottom > flickable.contentY + flickable.height) {
            flickable.contentY = Math.min(flickable.contentHeight - flickable.height,
                                          bottom - flickable.height);
        }
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() {
            root.reveal(root.Window.window.activeFocusItem);
        }
    }

    Flickable {
        id: flickable

        function holds(item: Item): bool {
            for (let i = item; i !== null; i = i.parent) {
                if (i === body) {
                    return true;
                }
            }
            return false;
        }

        anchors.fill: parent
        contentWidth: width
        contentHeight: column.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true
        T.ScrollBar.vertical: ScrollBar {}

        Column {
            id: column

            leftPadding: 36
            rightPadding: 36
            topPadding: 46
            bottomPadding: 30
            spacing: 16

            PageHeader {
                width: body.width
                title: root.title
                subtitle: root.subtitle
            }

            Column {
                id: body

                width: Math.max(0, Math.min(860, root.width - 72))
                spacing: 16
            }
        }
    }
}
