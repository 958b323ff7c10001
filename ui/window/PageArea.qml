pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Window

// Shows the page of the section. Each change of section makes a new page and destroys the old one
// with all its state.
Item {
    id: root

    required property AppModel model
    required property Sections sections

    readonly property int section: model.section
    property PageTurn page: null
    readonly property PagePane pane: page?.page as PagePane

    // Scrolls the page by a key that no control has taken.
    function press(event: var) {
        pane?.press(event);
    }

    // Whether the page, or something in it, has the focus.
    function isOn(turn: PageTurn): bool {
        for (let i = Window.activeFocusItem; i !== null; i = i.parent) {
            if (i === turn) {
                return true;
            }
        }
        return false;
    }

    function turn(moving: bool) {
        const old = page;
        const followed = old !== null && isOn(old);
        page = frame.createObject(root) as PageTurn;
        page.page = sections.all[section].page.createObject(page) as Item;
        page.page.anchors.fill = page;
        if (moving) {
            page.arrive();
        }
        if (old !== null) {
            old.leave();
        }
        // The focus of the old page goes to the new one.
        if (followed) {
            page.page.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    onSectionChanged: {
        if (page !== null) {
            turn(true);
        }
    }
    Component.onCompleted: turn(false)

    clip: true

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    Watermark {
        anchors.fill: parent
        symbol: root.sections.all[root.section].symbol
    }

    Component {
        id: frame

        PageTurn {
            width: root.width
            height: root.height
        }
    }
}
