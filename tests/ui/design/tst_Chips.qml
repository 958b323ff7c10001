pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// Small things: chips, buttons of words alone, spinners.
Item {
    id: root

    width: 600
    height: 300
    Accessible.role: Accessible.Pane
    Accessible.name: "Chips"

    Component {
        id: chip
        Chip { x: 20; y: 20; text: "node_modules"; help: "Rimuovi" }
    }

    // Chips that go when they are asked to.
    Component {
        id: chips
        Item {
            readonly property alias model: names
            readonly property alias flow: flow
            readonly property alias field: field

            anchors.fill: parent

            ListModel {
                id: names
                Component.onCompleted: ["a", "b", "c"].forEach(name => append({name: name}))
            }

            FlowLayout {
                id: flow
                width: parent.width
                spacing: 8

                Repeater {
                    model: names

                    Chip {
                        required property string name
                        required property int index

                        text: name
                        help: "Rimuovi"
                        onRemoved: names.remove(index)
                    }
                }
            }

            TextField { id: field; y: 100; name: "Nuova" }
        }
    }

    Component {
        id: words
        TextButton { x: 20; y: 20; text: "Apri il file di log" }
    }

    Component {
        id: spinner
        Spinner { x: 20; y: 20; name: "Verifica in corso..." }
    }

    SignalSpy { id: removals; signalName: "removed" }
    SignalSpy { id: clicks; signalName: "clicked" }

    Case {
        name: "Chips"

        function made(component, properties) {
            const item = drawn(component, properties);
            for (const spy of [removals, clicks]) {
                spy.target = null;
                spy.clear();
            }
            return item;
        }

        function names(item): var {
            return Array.from(item.flow.children).filter(child => child instanceof Chip).map(child => child.text);
        }

        function place(item): string {
            const found = Array.from(item.flow.children).find(child => child instanceof Chip
                                                           && child.closing.activeFocus);
            return found?.text ?? "";
        }

        function test_aChipAsksForItsRemovalByMouseKeysAndScreenReader_data() {
            return [{tag: "mouse"}, {tag: "space", key: Qt.Key_Space},
                {tag: "return", key: Qt.Key_Return}, {tag: "enter", key: Qt.Key_Enter},
                {tag: "delete", key: Qt.Key_Delete}, {tag: "backspace", key: Qt.Key_Backspace},
                {tag: "screen reader"}];
        }
        function test_aChipAsksForItsRemovalByMouseKeysAndScreenReader(data) {
            const item = made(chip);
            removals.target = item;
            if (data.tag === "mouse") {
                mouseClick(item.closing);
            } else if (data.tag === "screen reader") {
                ScreenReader.perform(item.closing, "Press");
            } else {
                item.closing.forceActiveFocus(Qt.TabFocusReason);
                verify(item.ringed);
                keyClick(data.key);
            }
            compare(removals.count, 1);
            compare(item.text, "node_modules"); // whoever uses it decides
        }

        function test_aClickOnTheTextOfAChipRemovesNothing() {
            const item = made(chip);
            removals.target = item;
            mouseClick(item, 20, 14);
            compare(removals.count, 0);
        }

        function test_theKeyboardGoesOnFromAChipThatGoes() {
            const item = made(chips);
            const first = Array.from(item.flow.children).find(child => child instanceof Chip);
            first.closing.forceActiveFocus(Qt.TabFocusReason);
            for (const [left, next] of [[["b", "c"], "b"], [["c"], "c"]]) {
                keyClick(Qt.Key_Delete);
                compare(names(item), left);
                compare(place(item), next);
            }
            keyClick(Qt.Key_Space);
            compare(names(item), []);
            verify(item.field.activeFocus);
        }

        function test_aLongTextIsCutInTheMiddle() {
            const item = made(chip, {text: "/home/utente/" + "x".repeat(300) + "/fine"});
            compare(item.width, 320);
            const label = part(item, "words");
            verify(label.truncated);
            verify(label.x + label.width <= item.closing.x);
            compare(ScreenReader.name(item), item.text);
            verify(!part(made(chip), "words").truncated);
        }

        function test_theScreenReaderTellsTheCrossesApart() {
            const item = made(chip);
            compare(ScreenReader.role(item), Accessible.ListItem);
            compare(ScreenReader.name(item), "node_modules");
            compare(ScreenReader.role(item.closing), Accessible.Button);
            compare(ScreenReader.name(item.closing), "Rimuovi: node_modules");
            compare(ScreenReader.faults(item), []);
        }

        function test_aTextOfSeveralLinesStandsOnOne() {
            const item = made(chip, {text: "una\nriga\r\ndopo l'altra"});
            compare(part(item, "words").text, "una riga dopo l'altra");
            compare(part(item, "words").lineCount, 1);
            compare(item.height, 28);
            compare(ScreenReader.name(item), "una riga dopo l'altra");
        }

        function test_aTextFromRightToLeftBeginsAtTheLeftToo() {
            const item = made(chip, {text: "\u05e9\u05dc\u05d5\u05dd", width: 300});
            compare(part(item, "words").effectiveHorizontalAlignment, Text.AlignLeft);
        }

        function test_aFaultIsSeenAndHeard() {
            const item = made(chip);
            const sound = item.width;
            const ground = part(item, "ground");
            const sign = part(item, "sign");
            const words = part(item, "words");
            verify(!sign.visible);
            compare(words.x, 12);
            verify(Qt.colorEqual(ground.rim.top, Theme.white(0.2)));
            compare(ScreenReader.description(item), "");
            item.fault = "Esclusione non valida";
            verify(sign.visible);
            compare(sign.name, "exclamationmark.circle.fill");
            verify(Qt.colorEqual(sign.color, Theme.coral));
            verify(Qt.colorEqual(ground.rim.top, Theme.coral));
            compare(words.x, sign.x + sign.width + 5);
            verify(!words.truncated);
            fuzzyCompare(item.width - sound, words.x - 12, 1);
            compare(ScreenReader.description(item), "Esclusione non valida");
            compare(ScreenReader.name(item), "node_modules");
        }

        function test_theTooltipSaysWhatCantBeSeen_data() {
            const path = "/home/" + "x".repeat(300);
            return [{tag: "nothing", text: "venv", fault: "", tip: ""},
                {tag: "the fault", text: "[a", fault: "Sbagliata", tip: "Sbagliata"},
                {tag: "all of the text", text: path, fault: "", tip: path},
                {tag: "both", text: path, fault: "Sbagliata", tip: path + "\nSbagliata"}];
        }
        function test_theTooltipSaysWhatCantBeSeen(data) {
            const item = made(chip, {text: data.text, fault: data.fault});
            const tip = findChild(item, "tip");
            compare(tip.text, data.tip);
            tip.delay = 0;
            mouseMove(item, 30, 14);
            if (data.tip === "") {
                wait(0);
                verify(!tip.visible);
            } else {
                tryVerify(() => tip.visible);
                mouseMove(item, item.width - 15, 14); // the button has one of its own
                tryVerify(() => !tip.visible);
            }
        }

        function test_aLongTooltipWrapsAndStaysInTheWindow() {
            const item = made(chip, {y: 200, text: "/" + "cartella lunga/".repeat(667)});
            const tip = findChild(item, "tip");
            tip.delay = 0;
            mouseMove(item, 30, 14);
            tryVerify(() => tip.opened);
            const label = tip.contentItem;
            compare(tip.width, 438);
            compare(label.lineCount, 8);
            verify(label.truncated);
            verify(label.contentWidth <= 420);
            const place = label.mapToItem(root, 0, 0);
            verify(place.x >= 0 && place.x + 420 <= root.width);
            verify(place.y >= 0 && place.y + label.height <= root.height);
            const brief = findChild(made(chip, {text: "[a", fault: "Sbagliata"}), "tip");
            compare(brief.contentItem.lineCount, 1);
            verify(brief.implicitWidth < 120);
        }

        function test_aDisabledChipStays() {
            const item = made(chip, {enabled: false});
            removals.target = item;
            mouseClick(item.closing);
            ScreenReader.perform(item.closing, "Press");
            compare(removals.count, 0);
            fuzzyCompare(item.opacity, 0.38, 1e-6);
            compare(item.closing.opacity, 1); // once is enough
        }

        function test_wordsAreClickedByMouseKeysAndScreenReader() {
            const button = made(words);
            clicks.target = button;
            mouseClick(button);
            ScreenReader.perform(button, "Press");
            compare(clicks.count, 2);
            verify(!button.ringed);
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.ringed);
            for (const key of [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter]) {
                clicks.clear();
                keyClick(key);
                compare(clicks.count, 1);
            }
            compare(ScreenReader.role(button), Accessible.Button);
            compare(ScreenReader.name(button), "Apri il file di log");
            compare(ScreenReader.faults(button), []);
        }

        function test_wordsAreUnderlinedUnderThePointerOnly() {
            const button = made(words);
            verify(!button.contentItem.font.underline);
            mouseMove(button, 10, 10);
            verify(button.contentItem.font.underline);
            button.enabled = false;
            verify(!button.contentItem.font.underline);
            mouseClick(button);
            fuzzyCompare(button.opacity, 0.38, 1e-6);
        }

        function test_aSpinnerGoesAroundStepByStep() {
            Motion.still = false;
            const item = made(spinner);
            const ring = part(item, "ring");
            compare(ring.lit.filter(lit => lit).length, 3);
            const seen = {};
            tryVerify(() => {
                seen[item.step] = ring.lit.join();
                return Object.keys(seen).length === item.ticks;
            });
            compare(new Set(Object.values(seen)).size, item.ticks);
        }

        function test_aSpinnerRestsWhereNothingMoves_data() {
            return [{tag: "still"}, {tag: "hidden"}, {tag: "stopped"}];
        }
        function test_aSpinnerRestsWhereNothingMoves(data) {
            Motion.still = false;
            const item = made(spinner);
            verify(item.moving);
            if (data.tag === "still") {
                Motion.still = true;
                verify(part(item, "ring").visible);
            } else if (data.tag === "hidden") {
                item.visible = false;
            } else {
                item.running = false;
                verify(!part(item, "ring").visible);
            }
            verify(!item.moving);
        }

        function test_theScreenReaderHearsOfASpinnerThatHasAName() {
            const item = made(spinner);
            compare(ScreenReader.role(item), Accessible.Indicator);
            compare(ScreenReader.tree(root), ["Pane: Chips", "Indicator: Verifica in corso..."]);
            item.name = "";
            compare(ScreenReader.tree(root), ["Pane: Chips"]);
        }
    }
}
