import QtQuick

// Scrolls content that is higher than its room: by wheel, by finger, and by the keys that nothing
// in it has taken. Whatever gets the focus is scrolled into sight.
Flickable {
    id: root

    property real air: 12 // left around what is scrolled into sight
    readonly property Item focused: Window.activeFocusItem

    function holds(item: Item): bool {
        for (let i = item; i !== null; i = i.parent) {
            if (i === contentItem) {
                return true;
            }
        }
        return false;
    }

    function reveal(item: Item) {
        if (item === null || !holds(item)) {
            return;
        }
        const place = item.mapToItem(contentItem, 0, 0);
        const top = Math.max(0, place.y - air);
        const bottom = Math.min(contentHeight, place.y + item.height + air);
        if (top < contentY) {
            contentY = top;
        } else if (bottom > contentY + height) {
            contentY = Math.min(top, bottom - height); // of an item higher than this, its top
        }
    }

    // Scrolls by a key, unless all is in sight. For keys that are heard outside of it, too.
    function press(event: var) {
        const page = Math.max(40, height - 28);
        const steps = {
            [Qt.Key_Up]: -40,
            [Qt.Key_Down]: 40,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_PageDown]: page,
            [Qt.Key_Home]: -contentHeight,
            [Qt.Key_End]: contentHeight
        };
        const shifted = (event.modifiers & Qt.ShiftModifier) !== 0;
        const others = event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier);
        const step = event.key === Qt.Key_Space ? (shifted ? -page : page)
                                                : shifted ? undefined : steps[event.key];
        if (step !== undefined && others === 0 && contentHeight > height) {
            cancelFlick();
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + step));
            event.accepted = true;
        }
    }

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: interactive
    onFocusedChanged: reveal(focused)
    Keys.onPressed: event => press(event)
}
