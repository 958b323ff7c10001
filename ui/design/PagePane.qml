import QtQuick
import QtQuick.Templates as T

// What all pages have in common: a pane that scrolls and can have the focus itself.
Scroller {
    id: root

    required property string title

    // Qt leaves the keyboard with an item that is hidden.
    readonly property bool lost: focused !== null && !focused.visible && holds(focused)

    // Where an item stands in the page: its place among its siblings, those of its parents before.
    function place(item: Item): var {
        const places = [];
        for (let i = item; i !== contentItem; i = i.parent) {
            places.unshift(Array.from(i.parent.children).indexOf(i));
        }
        return places;
    }

    function precedes(one: Item, other: Item): bool {
        const before = place(one);
        const after = place(other);
        const differing = before.findIndex((index, i) => index !== after[i]);
        return differing >= 0 && before[differing] < after[differing];
    }

    // Hands the keyboard on to what follows the hidden item, or to what comes before it.
    function handOn() {
        const from = focused;
        if (!lost) {
            return;
        }
        const next = from.nextItemInFocusChain(true);
        const target = holds(next) && precedes(from, next) ? next
                                                            : from.nextItemInFocusChain(false);
        const ringed = (from as T.Control)?.visualFocus
                       || (from as T.TextField)?.focusReason === Qt.TabFocusReason;
        (holds(target) ? target : root).forceActiveFocus(ringed ? Qt.TabFocusReason
                                                                : Qt.OtherFocusReason);
    }


    activeFocusOnTab: activeFocus // Tab goes on from here
    clip: true
    Accessible.role: Accessible.Pane
    Accessible.name: title

    // Once all that hides and shows with it has done so.
    Timer {
        interval: 0
        running: root.lost
        onTriggered: root.handOn()
    }
}
