pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance

// The two sheets as the window has them: over a page, on one model.
Item {
    id: root

    width: 980
    height: 660

    Component {
        id: page

        SheetsScene {
            id: behind

            readonly property alias button: button
            readonly property alias field: field
            readonly property alias list: list
            property int reactions: 0

            PillButton {
                id: button
                x: 20
                y: 20
                text: "Dietro"
                onClicked: behind.reactions += 1
            }

            TextField {
                id: field
                x: 20
                y: 80
                width: 150
                name: "Campo"
            }

            Flickable {
                id: list
                x: 20
                y: 140
                width: 150
                height: 200
                contentHeight: 2000
            }

            // Behind the sheets' own controls.
            MouseArea {
                anchors.centerIn: parent
                width: 600
                height: 500
                hoverEnabled: true
                onClicked: behind.reactions += 1
                onWheel: behind.reactions += 1
                onEntered: behind.reactions += 1
            }

            Shortcut {
                sequence: "Ctrl+B"
                onActivated: root.shortcuts += 1
            }
        }
    }

    property int shortcuts: 0

    SheetCase {
        name: "SheetsTogether"
        scene: page

        function prepare() {
            root.shortcuts = 0;
        }

        // The names of what has the keyboard, one Tab after the other, until it comes round.
        function walk(key) {
            const names = [];
            for (let i = 0; i < 12; ++i) {
                const name = focused().objectName;
                if (names.includes(name)) {
                    break;
                }
                names.push(name);
                keyClick(key);
            }
            return names;
        }

        function test_nothingBehindReacts_data() {
            return [{tag: "kit", sheet: "kit"}, {tag: "access", sheet: "access"}];
        }
        function test_nothingBehindReacts(data) {
            const item = made();
            keyClick("B", Qt.ControlModifier);
            compare(root.shortcuts, 1);
            mouseMove(root, 400, 300);
            compare(item.reactions, 1); // it would be heard
            item.field.forceActiveFocus();
            const sheet = item[data.sheet];
            raise(item, sheet);
            item.reactions = 0;
            root.shortcuts = 0;

            mouseClick(item.button);
            mouseMove(item.button, 5, 5);
            verify(!item.button.hovering);
            mouseClick(item.field);
            keyClick("x");
            compare(item.field.text, "");
            mouseWheel(item.list, 20, 20, 0, -240);
            compare(item.list.contentY, 0);
            mouseClick(root, 300, 200); // beside the sheet
            mouseClick(sheet.contentItem, 5, 5); // and on its ground
            mouseWheel(sheet.contentItem, 5, 5, 0, -240);
            mouseMove(sheet.contentItem, 20, 20);
            keyClick("B", Qt.ControlModifier);
            compare(item.reactions, 0);
            compare(root.shortcuts, 0);
            verify(sheet.opened); // a click beside it doesn't close it
            compare(item.prepared.takeAsked(), []);
        }

        function test_theKeyboardGoesIn_data() {
            return [{tag: "kit", sheet: "kit", first: "save"},
                {tag: "access", sheet: "access", first: "settings"}];
        }
        function test_theKeyboardGoesIn(data) {
            const item = made();
            item.button.forceActiveFocus(Qt.MouseFocusReason);
            raise(item, item[data.sheet]);
            compare(focused().objectName, data.first);
            verify(!focused().ringed); // the user came by the mouse
        }

        function test_andBackToWhatHadIt_data() { return test_theKeyboardGoesIn_data(); }
        function test_andBackToWhatHadIt(data) {
            const item = made();
            for (const before of [item.field, item.button]) {
                before.forceActiveFocus(Qt.TabFocusReason);
                raise(item, item[data.sheet]);
                verify(!before.activeFocus);
                keyClick(Qt.Key_Escape);
                tryCompare(item[data.sheet], "visible", false);
                compare(focused(), before);
            }
        }

        function test_theRingGoesAlongWithTheKeyboard_data() {
            return test_theKeyboardGoesIn_data();
        }
        function test_theRingGoesAlongWithTheKeyboard(data) {
            const item = made();
            item.button.forceActiveFocus(Qt.TabFocusReason);
            verify(item.button.ringed);
            raise(item, item[data.sheet]);
            verify(focused().ringed);
            keyClick(Qt.Key_Escape);
            tryCompare(item[data.sheet], "visible", false);
            verify(item.button.ringed);
        }

        function test_whatCannotTakeItBackIsLeftAlone() {
            const item = made();
            item.button.forceActiveFocus(Qt.TabFocusReason);
            raise(item, item.kit);
            item.button.visible = false;
            keyClick(Qt.Key_Escape);
            tryCompare(item.kit, "visible", false);
            verify(!item.button.activeFocus);
        }

        function test_openedAgainTheKeyboardIsOnTheSameControl() {
            const item = made();
            raise(item, item.kit);
            keyClick(Qt.Key_Tab);
            compare(focused().objectName, "print");
            keyClick(Qt.Key_Escape);
            tryCompare(item.kit, "visible", false);
            raise(item, item.kit);
            compare(focused().objectName, "save");
        }

        function test_tabGoesRoundInside_data() {
            return [
                {tag: "kit", sheet: "kit", confirmed: false,
                    names: ["save", "print", "copy", "box", "cross"]},
                {tag: "confirmed", sheet: "kit", confirmed: true,
                    names: ["save", "print", "copy", "box", "last", "cross"]},
                {tag: "access", sheet: "access", confirmed: false,
                    names: ["settings", "cross", "without"]}
            ];
        }
        function test_tabGoesRoundInside(data) {
            const item = made();
            raise(item, item[data.sheet]);
            item.kit.confirmed = data.confirmed;
            compare(walk(Qt.Key_Tab), data.names);
            compare(focused().objectName, data.names[0]);
            compare(walk(Qt.Key_Backtab),
                    [data.names[0]].concat(data.names.slice(1).reverse()));
        }

        function test_withTheKeyboardAloneTheKeyIsSavedAndTheBackupStarts() {
            const item = made();
            item.button.forceActiveFocus(Qt.TabFocusReason);
            item.model.startBackup();
            tryCompare(item.kit, "opened", true);
            keyClick(Qt.Key_Return);
            compare(item.prepared.takeAsked(), ["save"]);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Space);
            verify(item.kit.confirmed);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Return);
            compare(item.prepared.takeAsked(), ["notify", "start"]);
            tryCompare(item.kit, "visible", false);
            compare(focused(), item.button);
        }

        // Without the access, a backup that waited for the key goes on to wait for that.
        function withBothAsked() {
            const item = made("access");
            const config = item.model.config;
            config.keySaved = false;
            item.model.config = config;
            item.button.forceActiveFocus(Qt.TabFocusReason);
            item.model.startBackup();
            tryCompare(item.kit, "opened", true);
            mouseClick(part(item.kit, "confirmation"));
            mouseClick(part(item.kit, "last"));
            tryCompare(item.kit, "visible", false);
            tryCompare(item.access, "opened", true);
            return item;
        }

        function test_afterTheKitTheAccessIsAskedFor_data() {
            return [{tag: "still", still: true}, {tag: "moving", still: false}];
        }
        function test_afterTheKitTheAccessIsAskedFor(data) {
            Motion.still = data.still;
            const item = withBothAsked();
            compare(item.access.action, DiskAccess.GatedAction.Backup);
            compare(focused().objectName, "settings");
            mouseClick(part(item.access, "without"));
            compare(item.prepared.takeAsked(), ["start"]);
            tryCompare(item.access, "visible", false);
            compare(focused(), item.button);
        }

        function test_thatQuestionAbandonedNothingStarts() {
            const item = withBothAsked();
            keyClick(Qt.Key_Escape);
            tryCompare(item.access, "visible", false);
            verify(item.model.config.keySaved);
            compare(item.prepared.takeAsked(), []);
        }

        function test_theOneThatCameLastIsOnTopAndClosesFirst_data() {
            return [
                {tag: "kit last", below: "access", above: "kit", first: "settings",
                    button: "settings"},
                {tag: "access last", below: "kit", above: "access", first: "save", button: "print"}
            ];
        }
        function test_theOneThatCameLastIsOnTopAndClosesFirst(data) {
            const item = made();
            const below = item[data.below];
            const above = item[data.above];
            item.button.forceActiveFocus(Qt.TabFocusReason);
            raise(item, below);
            raise(item, above);
            settle();
            // Where the upper one has nothing to press.
            mouseClick(part(below, data.button));
            compare(item.prepared.takeAsked(), []);
            verify(below.opened && above.opened);
            keyClick(Qt.Key_Escape);
            tryCompare(above, "visible", false);
            verify(below.opened);
            compare(focused().objectName, data.first);
            keyClick(Qt.Key_Escape);
            tryCompare(below, "visible", false);
            compare(focused(), item.button);
        }

        function test_theLowerOneTakenAwayTheUpperStays() {
            const item = made();
            item.button.forceActiveFocus(Qt.TabFocusReason);
            raise(item, item.kit);
            raise(item, item.access);
            item.model.kit.showing = false;
            tryCompare(item.kit, "visible", false);
            verify(item.access.opened);
            compare(focused().objectName, "settings");
            keyClick(Qt.Key_Escape);
            tryCompare(item.access, "visible", false);
            compare(focused(), item.button);
        }

        function test_bothCloseWhenTheProgramEnds() {
            const item = made();
            raise(item, item.kit);
            raise(item, item.access);
            item.model.prepareToQuit();
            tryCompare(item.kit, "visible", false);
            tryCompare(item.access, "visible", false);
        }
    }
}
