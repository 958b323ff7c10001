pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// Rows of settings, labelled fields, rows that open.
Item {
    id: root

    width: 700
    height: 400
    Accessible.role: Accessible.Pane
    Accessible.name: "Rows"

    Component {
        id: setting
        SettingRow {
            x: 20
            y: 20
            width: 600
            title: "Backup automatico"
            subtitle: "Anche con l'app chiusa"

            PillButton { objectName: "control"; text: "Verifica" }
        }
    }

    Component {
        id: labelled
        LabelledField { x: 20; y: 20; label: "Indirizzo" }
    }

    Component {
        id: disclosure
        DisclosureRow {
            x: 20
            y: 20
            expanded: false
            text: "Credenziali OAuth personali"
            onClicked: expanded = !expanded
        }
    }

    // The one who uses it says no.
    Component {
        id: closedForGood
        DisclosureRow { x: 20; y: 20; expanded: false; text: "Credenziali" }
    }

    SignalSpy { id: edits; signalName: "edited" }
    SignalSpy { id: acceptances; signalName: "accepted" }
    SignalSpy { id: clicks; signalName: "clicked" }

    Case {
        name: "Rows"

        function made(component, properties) {
            const item = drawn(component, properties);
            for (const spy of [edits, acceptances, clicks]) {
                spy.target = null;
                spy.clear();
            }
            return item;
        }

        function test_aSettingHasItsControlAtTheTrailingSide() {
            const row = made(setting);
            const control = part(row, "control");
            verify(!row.stacked);
            compare(control.mapToItem(row, control.width, 0).x, 600);
            fuzzyCompare(control.mapToItem(row, 0, control.height / 2).y, row.height / 2, 1);
            const texts = part(row, "texts");
            verify(texts.x + texts.width <= control.mapToItem(row, 0, 0).x - 16 + 0.01);
        }

        function test_aSettingWithoutRoomHasItsControlBelow() {
            const row = made(setting, {width: 250, title: "Solo con l'alimentatore collegato"});
            const control = part(row, "control");
            row.control.implicitWidth = 120;
            verify(row.stacked);
            const texts = part(row, "texts");
            compare(texts.width, 250);
            compare(control.mapToItem(row, 0, 0), Qt.point(0, texts.height + 10));
            compare(row.height, texts.height + 10 + control.height);
        }

        function test_aControlIsNeverWiderThanItsRow() {
            const row = made(setting, {width: 200});
            row.control.implicitWidth = 420;
            compare(row.control.width, 200);
            row.width = 500;
            compare(row.control.width, 420);
        }

        function test_aSettingWithoutASubtitleIsAsHighAsItsControl() {
            const row = made(setting, {subtitle: ""});
            compare(row.height, row.control.height);
        }

        function test_aDisabledSettingFadesItsWordsOnceAndItsControlOnce() {
            const row = made(setting, {enabled: false});
            fuzzyCompare(part(row, "texts").opacity, 0.38, 1e-6);
            fuzzyCompare(row.control.opacity, 0.38, 1e-6);
            compare(row.opacity, 1);
        }

        function test_theScreenReaderHearsTitleAndSubtitle() {
            const row = made(setting);
            compare(ScreenReader.role(row), Accessible.Grouping);
            compare(ScreenReader.name(row), "Backup automatico");
            compare(ScreenReader.description(row), "Anche con l'app chiusa");
            compare(ScreenReader.faults(row), []);
        }

        function test_aFieldStandsBelowItsLabelAndIsNamedByIt() {
            const item = made(labelled, {width: 300});
            compare(item.field.width, 300);
            verify(item.field.y > 12);
            compare(item.height, item.field.y + item.field.height);
            compare(ScreenReader.name(item.field), "Indirizzo");
            compare(ScreenReader.faults(root), []);
        }

        function test_aClickOnTheLabelLeadsIntoTheField() {
            const item = made(labelled);
            mouseClick(item, 10, 5);
            verify(item.field.activeFocus);
            verify(item.ringed);
        }

        function test_aFieldReportsWhatTheUserTypesOnly() {
            const item = made(labelled);
            edits.target = item;
            acceptances.target = item;
            item.text = "given";
            compare(edits.count, 0);
            item.field.forceActiveFocus();
            keyClick(Qt.Key_End);
            keyClick("x");
            compare(edits.count, 1);
            compare(edits.signalArguments[0][0], "givenx");
            keyClick(Qt.Key_Return);
            compare(acceptances.count, 1);
        }

        function test_aSecureFieldTellsTheScreenReaderItsLabelAndNoLetter() {
            const item = made(labelled, {label: "Password", secure: true, text: "segreto"});
            compare(item.field.displayText.length, 7);
            compare(item.field.displayText.indexOf("s"), -1);
            compare(ScreenReader.description(item.field), "Password");
            item.field.forceActiveFocus();
            keyClick("x"); // not for a moment either
            compare(item.field.displayText.indexOf("x"), -1);
        }

        function test_aDisabledFieldTakesNothing() {
            const item = made(labelled, {enabled: false});
            mouseClick(item, 10, 5);
            mouseClick(item.field);
            keyClick("x");
            compare(item.text, "");
            fuzzyCompare(item.field.opacity, 0.38, 1e-6);
        }

        function test_aRowOpensAndClosesByMouseAndKeys() {
            const row = made(disclosure);
            mouseClick(row);
            verify(row.expanded);
            row.forceActiveFocus(Qt.TabFocusReason);
            verify(row.ringed);
            let expected = true;
            for (const key of [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter]) {
                expected = !expected;
                keyClick(key);
                compare(row.expanded, expected);
            }
        }

        function test_arrowsOpenAndCloseARow() {
            const row = made(disclosure);
            row.forceActiveFocus(Qt.TabFocusReason);
            for (const [key, expected] of [[Qt.Key_Left, false], [Qt.Key_Right, true],
                                           [Qt.Key_Right, true], [Qt.Key_Left, false]]) {
                keyClick(key);
                compare(row.expanded, expected);
            }
        }

        function test_aRowShowsWhatItIsGiven() {
            const row = made(closedForGood);
            clicks.target = row;
            mouseClick(row);
            ScreenReader.perform(row, "Press");
            compare(clicks.count, 2);
            verify(!row.expanded);
            verify(!ScreenReader.checked(row));
            compare(part(row, "chevron").rotation, 0);
        }

        function test_theChevronTurnsDownWithoutMovingAway() {
            const row = made(disclosure);
            const chevron = part(row, "chevron");
            const before = chevron.mapToItem(row, chevron.width / 2, chevron.height / 2);
            row.expanded = true;
            tryCompare(chevron, "rotation", 90);
            compare(chevron.mapToItem(row, chevron.width / 2, chevron.height / 2), before);
        }

        function test_theScreenReaderKnowsWhetherARowIsOpen() {
            const row = made(disclosure);
            compare(ScreenReader.role(row), Accessible.Button);
            compare(ScreenReader.name(row), "Credenziali OAuth personali");
            verify(!ScreenReader.checked(row));
            ScreenReader.perform(row, "Press");
            verify(ScreenReader.checked(row));
            compare(ScreenReader.faults(row), []);
        }

        function test_aDisabledRowStaysAsItIs() {
            const row = made(disclosure, {enabled: false});
            mouseClick(row);
            ScreenReader.perform(row, "Press");
            verify(!row.expanded);
            fuzzyCompare(row.opacity, 0.38, 1e-6);
        }
    }
}
