pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// Pages and sheets scroll by the keys that no control has taken.
Item {
    id: root

    width: 800
    height: 500

    Component {
        id: page
        Page {
            anchors.fill: parent
            title: "Cartelle"
            subtitle: "Che cosa si salva"
            PillButton { objectName: "first"; text: "In cima" }
            Segmented {
                objectName: "segments"
                name: "Licenza"
                options: [{value: 0, label: "uno"}, {value: 1, label: "due"}]
                selection: 0
                onChosen: value => selection = value
            }
            TextField { objectName: "field"; name: "Nome" }
            Rectangle { objectName: "inside"; width: 10; height: 2000 }
            PillButton { objectName: "last"; text: "In fondo" }
        }
    }

    Component {
        id: sheet
        Sheet {
            name: "Kit di recupero"
            onDismissed: close()
            Item { width: 10; height: 1500 }
        }
    }

    SignalSpy {
        id: clicks
        signalName: "clicked"
    }

    Case {
        name: "Scrolling"

        function made() {
            const item = drawn(page);
            item.forceActiveFocus();
            return item;
        }

        function test_eachKeyScrollsAsFarAsItSays() {
            const item = made();
            const end = item.contentHeight - item.height;
            const far = item.height - 28;
            const steps = [[Qt.Key_Down, 40], [Qt.Key_Up, 0], [Qt.Key_Up, 0],
                [Qt.Key_PageDown, far], [Qt.Key_PageDown, 2 * far], [Qt.Key_PageUp, far],
                [Qt.Key_End, end], [Qt.Key_PageDown, end], [Qt.Key_Down, end], [Qt.Key_Home, 0],
                [Qt.Key_Space, far]];
            for (const [key, place] of steps) {
                keyClick(key);
                compare(item.contentY, place);
            }
            keyClick(Qt.Key_Space, Qt.ShiftModifier);
            compare(item.contentY, 0);
        }

        function test_withOtherKeysHeldDownNothingScrolls() {
            const item = made();
            for (const modifier of [Qt.ControlModifier, Qt.AltModifier, Qt.MetaModifier,
                                    Qt.ShiftModifier]) {
                keyClick(Qt.Key_PageDown, modifier);
                compare(item.contentY, 0);
            }
        }

        function test_fromAButtonArrowsScrollAndSpacePresses() {
            const item = made();
            const button = part(item, "first");
            button.forceActiveFocus(Qt.TabFocusReason);
            clicks.target = button;
            clicks.clear();
            keyClick(Qt.Key_Space);
            compare(clicks.count, 1);
            compare(item.contentY, 0);
            keyClick(Qt.Key_Down);
            compare(item.contentY, 40);
            keyClick(Qt.Key_End);
            verify(item.contentY > 1000);
            verify(button.activeFocus);
        }

        function test_whatAControlDoesByAKeyItStillDoes() {
            const item = made();
            const segments = part(item, "segments");
            segments.contentItem.children[0].forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            compare(segments.selection, 1);
            compare(item.contentY, 0);
            const field = part(item, "field");
            field.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Home);
            compare(field.text, " ");
            compare(field.cursorPosition, 0);
            compare(item.contentY, 0);
        }

        function test_whereAllIsInSightKeysAreLeftAlone() {
            const item = made();
            part(item, "inside").height = 10;
            tryVerify(() => !item.interactive);
            keyClick(Qt.Key_PageDown);
            keyClick(Qt.Key_End);
            compare(item.contentY, 0);
        }

        function test_aSheetHigherThanTheWindowScrollsToo() {
            const item = createTemporaryObject(sheet, root);
            item.open();
            tryCompare(item, "opened", true);
            tryVerify(() => item.scrolling.interactive);
            keyClick(Qt.Key_PageDown);
            compare(item.scrolling.contentY, item.scrolling.height - 28);
            keyClick(Qt.Key_End);
            compare(item.scrolling.contentY, item.scrolling.contentHeight - item.scrolling.height);
            keyClick(Qt.Key_Escape);
            tryCompare(item, "visible", false);
        }

        function test_aSheetIsNeverWiderThanItsWindow() {
            const item = createTemporaryObject(sheet, root);
            item.open();
            compare(item.width, 480);
            item.ordinaryWidth = 900;
            compare(item.width, 800 - 48);
        }
    }
}
