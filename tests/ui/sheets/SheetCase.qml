import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// What the tests of the sheets have in common. Each begins with everything still and the pointer
// out of the way, and fails on any warning.
TestCase {
    id: root

    required property Item scene

    when: windowShown

    function init() {
        failOnWarning(/.*/);
        Motion.still = true;
        mouseMove(scene, 1, 1);
    }

    // Has everything laid out and drawn as it is now.
    function settle() {
        grabImage(scene);
    }

    // The ways to press a control.
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
}
