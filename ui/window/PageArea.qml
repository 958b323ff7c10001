pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview
import Vellomar.Window

// Where the pages are: each change of section puts a new page in the old one's stead, which takes
// with it whatever it was about.
Item {
    id: root

    required property AppModel model
    required property Summary summary
    required property list<string> symbols

    readonly property int section: model.section
    readonly property list<Component> pages: [overview, restore, sources, destinations, activity,
        settings]
    property PageTurn page: null
    readonly property PagePane pane: page?.page as PagePane

    // Scrolls the page by a key that nothing else has taken.
    function press(event: var) {
        pane?.press(event);
    }

    // Whether the keyboard is on the page or on something in it.
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
        page.page = pages[section].createObject(page) as Item;
        if (moving) {
            page.arrive();
        }
        if (old !== null) {
            old.leave();
        }
        // Whoever goes on by the keyboard goes on from the new page.
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
        symbol: root.symbols[root.section]
    }

    Component {
        id: frame

        PageTurn {
            width: root.width
            height: root.height
        }
    }

    Component {
        id: overview

        OverviewPage {
            anchors.fill: parent
            model: root.model
            summary: root.summary
        }
    }

    Component {
        id: restore

        PlaceholderPage {
            anchors.fill: parent
            symbol: root.symbols[AppModel.Section.Restore]
            title: root.model.title(AppModel.Section.Restore)
            subtitle: qsTranslate("Texts", "Scegli una versione e recupera file o cartelle")
        }
    }

    Component {
        id: sources

        PlaceholderPage {
            anchors.fill: parent
            symbol: root.symbols[AppModel.Section.Sources]
            title: root.model.title(AppModel.Section.Sources)
            subtitle: qsTranslate("Texts", "Cartelle incluse nel backup")
        }
    }

    Component {
        id: destinations

        PlaceholderPage {
            anchors.fill: parent
            symbol: root.symbols[AppModel.Section.Destinations]
            title: root.model.title(AppModel.Section.Destinations)
            subtitle: qsTranslate("Texts",
                                  "I backup sono indipendenti e cifrati. Se una destinazione non è "
                                  + "raggiungibile, le altre partono lo stesso.")
        }
    }

    Component {
        id: activity

        PlaceholderPage {
            anchors.fill: parent
            symbol: root.symbols[AppModel.Section.Activity]
            title: root.model.title(AppModel.Section.Activity)
            subtitle: qsTranslate("Texts", "Esito e durata di ogni backup")
        }
    }

    Component {
        id: settings

        PlaceholderPage {
            anchors.fill: parent
            symbol: root.symbols[AppModel.Section.Settings]
            title: root.model.title(AppModel.Section.Settings)
            subtitle: qsTranslate("Texts", "Preferenze di Vellomar")
        }
    }
}
