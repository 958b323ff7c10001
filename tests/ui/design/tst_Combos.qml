pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// A choice of many, in a list of recycled entries.
Item {
    id: root

    readonly property var cities: ["Ancona", "Bari", "Bergamo", "Bologna", "Cagliari", "Como",
        "Ferrara", "Genova", "La Spezia", "L'Aquila", "Milano", "Napoli", "Padova", "Palermo",
        "Roma", "Siena", "Torino", "Trieste", "Udine", "Venezia"]
        .map((label, i) => ({value: i * 10, label: label}))
    readonly property var many: Array.from({length: 10000}, (_, i) => ({value: i,
                                                                       label: "Versione " + i}))

    width: 600
    height: 500
    Accessible.role: Accessible.Pane
    Accessible.name: "Combos"

    Component {
        id: combo
        Combo {
            x: 50
            y: 20
            name: "Luogo"
            options: root.cities
            selection: 30
        }
    }

    Component {
        id: sheet
        Sheet {
            name: "Sheet"
            onDismissed: close()

            Combo { objectName: "inside"; name: "Luogo"; options: root.cities; selection: 30 }
        }
    }

    TextField { id: after; x: 50; y: 450; name: "After" }

    SignalSpy { id: choices; signalName: "chosen" }

    Case {
        name: "Combos"

        function made(properties) {
            const item = createTemporaryObject(combo, root, properties ?? {});
            choices.target = item;
            choices.clear();
            grabImage(root);
            return item;
        }

        function opened(properties) {
            const item = made(properties);
            item.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            tryVerify(() => item.list.visible && item.activeFocus);
            grabImage(root);
            return item;
        }

        // All entries that there are, those kept for later too.
        function entries(item): int {
            return Array.from(item.list.view.contentItem.children).filter(child => child instanceof ComboEntry).length;
        }

        function inSight(item, at): bool {
            const entry = item.list.view.itemAtIndex(at);
            return entry !== null && entry.y >= item.list.view.contentY - 0.5
                && entry.y + entry.height <= item.list.view.contentY + item.list.view.height + 0.5;
        }

        function test_itShowsTheLabelOfItsSelection() {
            const item = made();
            compare(item.displayText, "Bologna");
            item.selection = "none of them";
            compare(item.displayText, "");
            compare(item.index, -1);
        }

        function test_itOpensByMouseKeysAndScreenReader_data() {
            return [{tag: "mouse"}, {tag: "space", key: Qt.Key_Space},
                {tag: "return", key: Qt.Key_Return}, {tag: "enter", key: Qt.Key_Enter},
                {tag: "down", key: Qt.Key_Down}, {tag: "up", key: Qt.Key_Up},
                {tag: "screen reader"}];
        }
        function test_itOpensByMouseKeysAndScreenReader(data) {
            const item = made();
            if (data.tag === "mouse") {
                mouseClick(item);
                item.forceActiveFocus();
            } else if (data.tag === "screen reader") {
                ScreenReader.perform(item, "Press");
                item.forceActiveFocus();
            } else {
                item.forceActiveFocus(Qt.TabFocusReason);
                verify(item.ringed);
                keyClick(data.key);
            }
            tryVerify(() => item.list.visible && item.activeFocus);
            compare(item.list.view.currentIndex, 3);
            verify(inSight(item, 3));
            compare(choices.count, 0);
        }

        function test_aClickOnAnEntryAsksForIt() {
            const item = opened();
            mouseClick(item.list.view.itemAtIndex(4));
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], 40);
            compare(item.selection, 30); // whoever uses it decides
            compare(item.displayText, "Bologna");
            tryVerify(() => !item.list.visible);
        }

        function test_returnAndSpaceAskForTheCurrentEntry_data() {
            return [{tag: "space", key: Qt.Key_Space}, {tag: "return", key: Qt.Key_Return},
                {tag: "enter", key: Qt.Key_Enter}];
        }
        function test_returnAndSpaceAskForTheCurrentEntry(data) {
            const item = opened();
            keyClick(Qt.Key_Down);
            keyClick(data.key);
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], 40);
            tryVerify(() => !item.list.visible && item.activeFocus);
            verify(item.ringed);
        }

        function test_theSelectionIsNotAskedForAgain() {
            const item = opened();
            keyClick(Qt.Key_Return);
            tryVerify(() => !item.list.visible);
            compare(choices.count, 0);
        }

        function test_escapeClosesItAndAsksForNothing() {
            const item = opened();
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !item.list.visible);
            verify(item.activeFocus);
            compare(choices.count, 0);
            keyClick(Qt.Key_Escape); // it has nothing to close, and others may hear it
            verify(item.activeFocus);
        }

        function test_tabClosesItAndLeadsOn() {
            const item = opened();
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Tab);
            verify(after.activeFocus);
            tryVerify(() => !item.list.visible);
            compare(choices.count, 0);
        }

        function test_aPressBesideItClosesIt() {
            const item = opened();
            mouseClick(root, 500, 480);
            tryVerify(() => !item.list.visible);
            compare(choices.count, 0);
        }

        function test_aPressOnItClosesIt() {
            const item = opened();
            mouseClick(item);
            tryVerify(() => !item.list.visible);
        }

        function test_inASheetEscapeClosesTheListFirst() {
            const over = createTemporaryObject(sheet, root);
            over.open();
            tryCompare(over, "opened", true);
            const item = findChild(over.contentItem, "inside");
            item.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            tryVerify(() => item.list.visible && item.activeFocus);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !item.list.visible);
            verify(over.visible);
            keyClick(Qt.Key_Escape);
            tryCompare(over, "visible", false);
        }

        function test_keysMoveThroughTheListWithinItsEnds() {
            const item = opened();
            const page = Math.floor(item.list.view.height / item.list.view.rowHeight) - 1;
            verify(page > 3);
            const steps = [[Qt.Key_Down, 4], [Qt.Key_Up, 3], [Qt.Key_Home, 0], [Qt.Key_Up, 0],
                [Qt.Key_PageDown, page], [Qt.Key_PageUp, 0], [Qt.Key_PageUp, 0], [Qt.Key_End, 19],
                [Qt.Key_Down, 19], [Qt.Key_PageDown, 19], [Qt.Key_PageUp, 19 - page]];
            for (const [key, at] of steps) {
                keyClick(key);
                compare(item.list.view.currentIndex, at);
                verify(inSight(item, at), at + " is in sight");
            }
            compare(choices.count, 0);
        }

        function test_lettersGoToTheEntryThatBeginsWithThem() {
            const item = opened();
            const current = () => root.cities[item.list.view.currentIndex].label;
            for (const [letter, label] of [["p", "Padova"], ["a", "Padova"], ["l", "Palermo"]]) {
                keyClick(letter);
                compare(current(), label);
            }
            compare(choices.count, 0);
        }

        function test_aLetterAgainGoesToTheNextEntryWithIt() {
            const item = opened();
            const seen = [];
            for (let i = 0; i < 4; ++i) {
                keyClick("b");
                seen.push(root.cities[item.list.view.currentIndex].label);
            }
            compare(seen, ["Bari", "Bergamo", "Bologna", "Bari"]);
        }

        function test_aBlankBetweenLettersIsOneOfThem() {
            const item = opened();
            for (const letter of "la s") {
                keyClick(letter);
            }
            verify(item.list.visible);
            compare(root.cities[item.list.view.currentIndex].label, "La Spezia");
        }

        function test_afterAPauseLettersBeginAnew() {
            const item = opened();
            item.list.pause = 1;
            keyClick("t");
            compare(root.cities[item.list.view.currentIndex].label, "Torino");
            tryCompare(item.list, "typed", "");
            keyClick("s");
            compare(root.cities[item.list.view.currentIndex].label, "Siena");
        }

        function test_lettersThatNothingBeginsWithMoveNothing() {
            const item = opened();
            keyClick("z");
            compare(item.list.view.currentIndex, 3);
            keyClick("v", Qt.ControlModifier);
            compare(item.list.view.currentIndex, 3);
        }

        function test_aLetterOpensTheListAtItsEntry() {
            const item = made();
            item.forceActiveFocus(Qt.TabFocusReason);
            keyClick("r");
            tryVerify(() => item.list.visible);
            compare(root.cities[item.list.view.currentIndex].label, "Roma");
            compare(choices.count, 0);
        }

        function test_ofTenThousandOnlyTheEntriesInSightAreMade() {
            const item = opened({options: root.many, selection: 5000});
            compare(item.list.view.currentIndex, 5000);
            verify(inSight(item, 5000));
            const most = 3 * Math.ceil(item.list.view.height / item.list.view.rowHeight) + 30;
            verify(entries(item) <= most, entries(item) + " entries");
            keyClick(Qt.Key_Home);
            for (let i = 0; i < 100; ++i) {
                keyClick(Qt.Key_PageDown);
                grabImage(item.list.view);
            }
            keyClick(Qt.Key_End);
            compare(item.list.view.currentIndex, 9999);
            verify(inSight(item, 9999));
            for (const letter of "versione 77") {
                keyClick(letter);
            }
            compare(item.list.view.currentIndex, 77);
            verify(entries(item) <= most, entries(item) + " entries");
            compare(item.list.view.itemAtIndex(77).text, "Versione 77");
        }

        function test_aClosedListHasNoEntries() {
            compare(entries(made({options: root.many})), 0);
        }

        function test_aLongListHasAScrollBarAndAShortOneHasNone() {
            const item = opened();
            const bar = whole => Array.from(whole.list.view.children).find(child => child instanceof ScrollBar);
            verify(bar(item).visible);
            verify(item.list.view.itemAtIndex(3).width < item.list.view.width);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !item.list.visible);
            const few = opened({options: root.cities.slice(0, 4)});
            verify(!bar(few).visible);
            compare(few.list.view.itemAtIndex(3).width, few.list.view.width);
        }

        function test_itStaysWithinItsWindow() {
            const item = opened({y: 430, options: root.many, selection: 0});
            const top = item.list.view.mapToItem(root, 0, 0).y;
            verify(top >= 8 && top + item.list.view.height <= root.height - 8);
        }

        function test_withNoOptionsItStaysClosed() {
            const item = made({options: []});
            mouseClick(item);
            ScreenReader.perform(item, "Press");
            verify(!item.list.visible);
        }

        function test_optionsThatGoWhileItIsOpenLeaveNothingToChoose() {
            const item = opened();
            keyClick(Qt.Key_End);
            item.options = root.cities.slice(0, 2);
            keyClick(Qt.Key_Return);
            verify(choices.count === 0 || choices.signalArguments[0][0] <= 10);
        }

        function test_disabledItClosesAndStaysClosed() {
            const item = opened();
            item.enabled = false;
            tryVerify(() => !item.list.visible);
            mouseClick(item);
            ScreenReader.perform(item, "Press");
            verify(!item.list.visible);
            fuzzyCompare(item.opacity, 0.38, 1e-6);
        }

        function test_hiddenItCloses() {
            const item = opened();
            item.visible = false;
            tryVerify(() => !item.list.visible);
        }

        function test_theScreenReaderKnowsItAndItsEntries() {
            const item = made();
            item.forceActiveFocus();
            compare(ScreenReader.role(item), Accessible.ComboBox);
            compare(ScreenReader.name(item), "Luogo: Bologna");
            compare(ScreenReader.faults(item), []);
            ScreenReader.perform(item, "Press");
            tryVerify(() => item.list.visible);
            grabImage(root);
            keyClick(Qt.Key_Down);
            compare(ScreenReader.name(item), "Luogo: Cagliari"); // while the keys move through it
            keyClick(Qt.Key_Up);
            compare(ScreenReader.role(item.list.view), Accessible.List);
            compare(ScreenReader.name(item.list.view), "Luogo");
            const entry = item.list.view.itemAtIndex(4);
            compare(ScreenReader.role(entry), Accessible.ListItem);
            compare(ScreenReader.name(entry), "Cagliari");
            verify(!ScreenReader.selected(entry));
            verify(ScreenReader.selected(item.list.view.itemAtIndex(3)));
            ScreenReader.perform(entry, "Press");
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], 40);
        }
    }
}
