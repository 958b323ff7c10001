import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// What the tests of the window have in common. Each begins with everything still and the pointer
// out of the way, and fails on any warning.
TestCase {
    id: root

    // The item that fills the window.
    property Item stage: parent
    // Where on it the pointer is out of the way.
    property point aside: Qt.point(1, 1)
    // The warnings that a test fails on.
    property var unexpected: /.*/

    when: windowShown

    function init() {
        failOnWarning(unexpected);
        Motion.still = true;
        mouseMove(stage, aside.x, aside.y);
        root.prepare();
    }

    // What a file does before each of its tests.
    function prepare() {
    }

    // An object of a component on the stage, laid out and looked at.
    function drawn(component, properties) {
        const item = createTemporaryObject(component, stage, properties ?? {});
        Eye.look(stage);
        return item;
    }

    // The part of an item, or of what a popup holds, that has a name; there has to be one.
    function part(whole, name) {
        const found = findChild(whole.contentItem && !whole.children ? whole.contentItem : whole,
                                name);
        verify(found !== null, name);
        return found;
    }

    // What all texts on show say in an item, or in what a popup holds.
    function texts(whole) {
        return textItems(whole).map(item => item.text);
    }

    // The items of these texts, as they stand below each other.
    function textItems(whole) {
        const top = whole.contentItem && !whole.children ? whole.contentItem : whole;
        const found = [];
        const visit = item => {
            if (!item.visible) {
                return;
            }
            if (item.textFormat !== undefined && item.text !== "") {
                const place = item.mapToItem(top, 0, 0);
                found.push({x: place.x, y: place.y, item: item});
            }
            Array.from(item.children).forEach(visit);
        };
        visit(top);
        found.sort((one, other) => Math.abs(one.y - other.y) > 4 ? one.y - other.y
                                                                 : one.x - other.x);
        return found.map(entry => entry.item);
    }

    // The item that has the keyboard.
    function focused() {
        return stage.Window.window.activeFocusItem;
    }

    // The ways to press a control, as rows of data.
    function ways() {
        return [{tag: "mouse", way: "mouse"}, {tag: "space", way: Qt.Key_Space},
            {tag: "return", way: Qt.Key_Return}, {tag: "enter", way: Qt.Key_Enter},
            {tag: "screen reader", way: "screen reader"}];
    }

    function press(item, way) {
        if (way === "mouse") {
            mouseClick(item);
        } else if (way === "screen reader") {
            ScreenReader.perform(item, "Press");
        } else {
            item.forceActiveFocus(Qt.TabFocusReason);
            keyClick(way);
        }
    }

    function isColour(pixel, colour, what) {
        verify(Colours.near(pixel, colour), "%1: %2 %3 %4 instead of %5".arg(what ?? "colour")
               .arg(pixel.r).arg(pixel.g).arg(pixel.b).arg(Colours.channels(colour).join(" ")));
    }

    // Whether a place of an item had a colour when it was looked at.
    function looks(item, x, y, colour, what) {
        isColour(Eye.at(item, x, y), colour, what ?? "%1, %2".arg(x).arg(y));
    }
}
