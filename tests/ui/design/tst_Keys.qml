pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// The field that shows a key, and doesn't give it away before.
Item {
    id: root

    readonly property string key: "b7KQ-9fTz-XW3m-Lp4s"
    readonly property string bullets: "\u2022".repeat(24)

    width: 600
    height: 300

    Component {
        id: field
        KeyField { x: 20; y: 20; width: 400; name: "Chiave di cifratura"; key: root.key }
    }

    Case {
        name: "Keys"

        function made(properties) {
            return drawn(field, properties);
        }

        function test_aHiddenKeyIsBulletsOfOneLengthWhateverItIs_data() {
            return [{tag: "short", key: "a"}, {tag: "none", key: ""}, {tag: "usual", key: root.key},
                {tag: "long", key: "x".repeat(500)}];
        }
        function test_aHiddenKeyIsBulletsOfOneLengthWhateverItIs(data) {
            const item = made({key: data.key});
            compare(item.text, root.bullets);
            compare(item.length, 24);
            compare(item.height, made({}).height);
        }

        function test_aHiddenKeyIsInNothingThatAScreenReaderGets() {
            const item = made();
            verify(!ScreenReader.heard(item).includes(root.key));
            verify(!ScreenReader.heard(item).includes(root.key[0]));
            compare(ScreenReader.name(item), "Chiave di cifratura");
            item.revealed = true;
            verify(ScreenReader.heard(item).includes(root.key));
            item.revealed = false;
            verify(!ScreenReader.heard(item).includes(root.key));
        }

        function test_aHiddenKeyIsDrawnAsAnyOther() {
            const item = made();
            const one = grabImage(root);
            item.key = "something else altogether";
            verify(grabImage(root).equals(one));
            item.revealed = true;
            verify(!grabImage(root).equals(one));
        }

        function test_aHiddenKeyCannotBeSelected() {
            const item = made();
            mousePress(item, 20, item.height / 2);
            mouseMove(item, 150, item.height / 2);
            mouseRelease(item, 150, item.height / 2);
            compare(item.selectedText, "");
            item.forceActiveFocus();
            keyClick(Qt.Key_A, Qt.ControlModifier);
            compare(item.selectedText, "");
            verify(!item.ringed);
        }

        function test_aShownKeyIsSelectedByMouseAndKeys() {
            const item = made({revealed: true});
            compare(item.text, root.key);
            mousePress(item, item.leftPadding + 1, item.height / 2);
            mouseMove(item, item.width / 4, item.height / 2);
            mouseMove(item, item.width - 2, item.height / 2);
            mouseRelease(item, item.width - 2, item.height / 2);
            compare(item.selectedText, root.key);
            item.deselect();
            item.forceActiveFocus(Qt.TabFocusReason);
            verify(item.ringed);
            keyClick(Qt.Key_A, Qt.ControlModifier);
            compare(item.selectedText, root.key);
            item.select(0, 0);
            item.cursorPosition = 0;
            keyClick(Qt.Key_Right, Qt.ShiftModifier);
            compare(item.selectedText, root.key[0]);
        }

        function test_nothingCanBeTypedIntoAKey() {
            const item = made({revealed: true});
            item.forceActiveFocus();
            keyClick("x");
            keyClick(Qt.Key_Delete);
            compare(item.text, root.key);
        }

        function test_hidingAKeyTakesItsSelectionAway() {
            const item = made({revealed: true});
            item.forceActiveFocus();
            item.selectAll();
            item.revealed = false;
            compare(item.selectedText, "");
            compare(item.text, root.bullets);
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(item.text, root.bullets);
        }

        function test_theKeyboardReachesAShownKeyOnly() {
            const item = made();
            verify(!item.activeFocusOnTab);
            item.revealed = true;
            verify(item.activeFocusOnTab);
            compare(ScreenReader.role(item), Accessible.EditableText);
            compare(ScreenReader.faults(item), []);
        }

        function test_aLongKeyBreaksWithinTheField() {
            const item = made({revealed: true, key: "K".repeat(200)});
            verify(item.lineCount > 2);
            verify(item.contentWidth <= item.width - 22);
            verify(item.height >= item.contentHeight + 16);
        }

        function test_aDisabledKeyFades() {
            fuzzyCompare(made({enabled: false}).opacity, 0.38, 1e-6);
        }
    }
}
