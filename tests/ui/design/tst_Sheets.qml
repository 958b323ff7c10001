pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// What the keyboard does while a sheet is open.
Item {
    id: root

    width: 800
    height: 500

    TextField {
        id: behind

        name: "Server"
    }

    Component {
        id: component

        Sheet {
            id: sheet

            property int presses: 0

            name: "Kit di recupero"
            defaultButton: main
            onDismissed: close()

            TextField { objectName: "field"; name: "Nome" }
            IconButton { objectName: "cross"; symbol: "xmark"; help: "Chiudi" }
            PillButton { objectName: "other"; text: "Stampa" }
            PillButton {
                id: main

                objectName: "main"
                text: "Continua"
                onClicked: ++sheet.presses
            }
        }
    }

    SignalSpy {
        id: dismissals
        signalName: "dismissed"
    }

    SignalSpy {
        id: clicks
        signalName: "clicked"
    }

    Case {
        name: "Sheets"
        aside: Qt.point(790, 490) // not on the sheet

        function cleanup() {
            behind.focus = false;
        }

        function opened() {
            const sheet = createTemporaryObject(component, root);
            sheet.open();
            tryCompare(sheet, "opened", true);
            return sheet;
        }

        function places() {
            return [{tag: "nowhere"}, {tag: "field"}, {tag: "cross"}, {tag: "other"}, {tag: "main"},
                {tag: "behind"}];
        }

        function focusOn(sheet, place) {
            if (place !== "nowhere") {
                const item = place === "behind" ? behind : part(sheet, place);
                item.forceActiveFocus(Qt.TabFocusReason);
                verify(item.activeFocus);
            }
        }

        function test_escapeIsHeardWhereverTheFocusIs_data() { return places(); }
        function test_escapeIsHeardWhereverTheFocusIs(data) {
            const sheet = opened();
            focusOn(sheet, data.tag);
            keyClick(Qt.Key_Escape);
            tryCompare(sheet, "visible", false);
        }

        function test_anOpenTooltipDoesNotHoldEscapeBack() {
            const sheet = opened();
            const cross = part(sheet, "cross");
            mouseMove(cross, 14, 14);
            const tip = findChild(cross, "tip");
            tryCompare(tip, "opened", true);
            keyClick(Qt.Key_Escape);
            tryCompare(sheet, "visible", false);
        }

        function test_aSheetThatFadesOutTakesNoKeysAnyMore() {
            const sheet = opened();
            Motion.still = false;
            keyClick(Qt.Key_Escape);
            verify(sheet.visible);
            behind.forceActiveFocus();
            dismissals.target = sheet;
            dismissals.clear();
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Return);
            compare(dismissals.count, 0);
            compare(sheet.presses, 0);
            tryCompare(sheet, "visible", false);
        }

        function test_escapeClosesTheTopmostSheetOnly() {
            const lower = opened();
            const upper = opened();
            keyClick(Qt.Key_Escape);
            tryCompare(upper, "visible", false);
            verify(lower.opened);
            keyClick(Qt.Key_Escape);
            tryCompare(lower, "visible", false);
        }

        function test_escapeOfAClosedSheetIsLeftToTheWindow() {
            const sheet = opened();
            sheet.close();
            tryCompare(sheet, "visible", false);
            keyClick(Qt.Key_Escape);
            compare(sheet.visible, false);
        }

        function test_returnPressesTheDefaultButton_data() {
            const rows = [];
            for (const place of places().filter(one => !["cross", "other"].includes(one.tag))) {
                for (const key of [Qt.Key_Return, Qt.Key_Enter]) {
                    rows.push({tag: place.tag + " " + key, place: place.tag, key: key});
                }
            }
            return rows;
        }
        function test_returnPressesTheDefaultButton(data) {
            const sheet = opened();
            focusOn(sheet, data.place);
            keyClick(data.key);
            compare(sheet.presses, 1);
        }

        function test_aButtonWithTheFocusTakesReturnItself() {
            const sheet = opened();
            clicks.target = part(sheet, "other");
            clicks.clear();
            focusOn(sheet, "other");
            keyClick(Qt.Key_Return);
            compare(clicks.count, 1);
            compare(sheet.presses, 0);
        }

        function test_aDefaultButtonThatIsDisabledOrHiddenIsNotPressed_data() {
            return [{tag: "disabled", property: "enabled"}, {tag: "hidden", property: "visible"}];
        }
        function test_aDefaultButtonThatIsDisabledOrHiddenIsNotPressed(data) {
            const sheet = opened();
            part(sheet, "main")[data.property] = false;
            for (const place of ["field", "behind"]) {
                focusOn(sheet, place);
                keyClick(Qt.Key_Return);
                compare(sheet.presses, 0);
            }
        }
    }
}
