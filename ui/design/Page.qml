import QtQuick
import QtQuick.Templates as T

// A page of the window: it scrolls, under its header stands its content, at the leading side.
Item {
    id: root

    required property string title
    required property string subtitle
    default property alias content: body.data
    readonly property alias scrolling: scroller

    Accessible.role: Accessible.Pane
    Accessible.name: title

    // Scrolls by a key that none of its controls has taken.
    function press(event: var) {
        scroller.press(event);
    }

    // Once it has the keyboard itself, the Tab key goes on from here.
    activeFocusOnTab: activeFocus
    Keys.onPressed: event => press(event)

    Scroller {
        id: scroller

        anchors.fill: parent
        contentHeight: column.height
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
