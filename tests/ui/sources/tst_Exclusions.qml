pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Sources
import Vellomar.Testing

// What doesn't go into the backup.
Item {
    id: root

    width: 760
    height: 900
    Accessible.role: Accessible.Pane
    Accessible.name: "Esclusioni"

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    PreparedModel { id: prepared }
    SourcesView { id: shown; model: prepared.model }

    Component {
        id: panel
        ExclusionsPanel {
            x: 20
            y: 20
            width: 686
            model: prepared.model
            view: shown
        }
    }

    Case {
        name: "Exclusions"

        readonly property var defaults: ["~/.Trash", "~/Library/Caches", "~/Library/Logs",
            "~/Library/Mobile Documents", "~/Library/CloudStorage",
            "~/Library/Developer/Xcode/DerivedData", "~/Library/Developer/CoreSimulator",
            "~/Library/Containers/com.docker.docker", "node_modules", ".pnpm-store"]

        function prepare() {
            prepared.state = "kit"; // and so back to a new world
            prepared.state = "fresh";
        }

        // The panel of a state, with other exclusions where there are any.
        function made(state, excludes, properties) {
            prepared.state = state;
            if (excludes) {
                choose(excludes);
            }
            return drawn(panel, properties);
        }

        function choose(excludes) {
            const config = prepared.model.config;
            config.excludes = excludes;
            prepared.model.config = config;
        }

        function excludes(): var {
            return Array.from(prepared.model.config.excludes);
        }

        function chips(item): var {
            return Array.from(part(item, "chips").children).filter(child => child instanceof Chip);
        }

        function type(item, text) {
            const field = part(item, "field");
            field.forceActiveFocus(Qt.TabFocusReason);
            field.text = text;
        }

        function test_eachExclusionIsAChip() {
            const item = made("fresh");
            compare(chips(item).map(chip => chip.text), defaults);
            compare(chips(item).map(chip => chip.help), Array(10).fill("Rimuovi"));
            compare(part(item, "note").words.replace(/\u00a0/g, " "),
                    "Percorsi o nomi esclusi dal backup. Un nome senza barre, come node_modules, "
                    + "vale in ogni cartella.");
            const flow = part(item, "chips");
            compare(flow.width, 650);
            compare(ScreenReader.role(flow), Accessible.List);
            compare(ScreenReader.name(flow), "Esclusioni");
            compare(ScreenReader.faults(root.Window.window), []);
        }

        function test_theChipsWrapLikeWords() {
            const item = made("fresh");
            const flow = part(item, "chips");
            let row = 0;
            let end = 0;
            for (const chip of chips(item)) {
                if (chip.x === 0 && end > 0) {
                    verify(end + 8 + chip.width > 650);
                    row += 28 + 8;
                } else if (end > 0) {
                    compare(chip.x, end + 8);
                }
                compare(chip.y, row);
                end = chip.x + chip.width;
                verify(end <= 650);
            }
            verify(row > 0);
            compare(flow.height, row + 28);
        }

        function test_aChipRemovesItsExclusion_data() {
            return ways().concat([{tag: "delete", way: Qt.Key_Delete}]);
        }
        function test_aChipRemovesItsExclusion(data) {
            const item = made("fresh", ["uno", "due", "tre"]);
            press(chips(item)[1].closing, data.way);
            compare(excludes(), ["uno", "tre"]);
            compare(chips(item).map(chip => chip.text), ["uno", "tre"]);
        }

        function test_theKeyboardGoesOnToTheNeighbour() {
            const item = made("fresh", ["uno", "due"]);
            chips(item)[0].closing.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Delete);
            verify(chips(item)[0].closing.activeFocus);
            compare(chips(item)[0].text, "due");
            keyClick(Qt.Key_Delete);
            compare(excludes(), []);
            verify(!part(item, "chips").visible);
            verify(part(item, "field").activeFocus);
        }

        function test_aChipKeepsItsItemAndTheKeyboardWhileOthersComeAndGo() {
            const item = made("fresh", ["uno", "due", "tre"]);
            const chip = chips(item)[1];
            chip.closing.forceActiveFocus(Qt.TabFocusReason);
            choose(["zero", "due"]);
            verify(chip.closing.activeFocus);
            compare(chips(item)[1], chip);
        }

        function test_whatIsTypedIsAdded_data() {
            return [{tag: "return", key: Qt.Key_Return}, {tag: "enter", key: Qt.Key_Enter}].concat(
                ways().map(way => ({tag: "button by " + way.tag, way: way.way})));
        }
        function test_whatIsTypedIsAdded(data) {
            const item = made("fresh", ["uno"]);
            const field = part(item, "field");
            field.forceActiveFocus(Qt.TabFocusReason);
            for (const letter of " due ") {
                keyClick(letter);
            }
            if (data.key) {
                keyClick(data.key);
                verify(field.activeFocus);
            } else {
                press(part(item, "add"), data.way);
            }
            tryCompare(field, "text", "");
            compare(excludes(), ["uno", "due"]);
            compare(chips(item).map(chip => chip.text), ["uno", "due"]);
        }

        function test_whatStandsThereAlreadyIsntAddedTwice() {
            const item = made("fresh", ["uno"]);
            type(item, "  uno\t");
            keyClick(Qt.Key_Return);
            tryCompare(part(item, "field"), "text", "");
            compare(excludes(), ["uno"]);
        }

        function test_blanksAreNothingToAdd_data() {
            return [{tag: "nothing", text: ""}, {tag: "blanks", text: "   "},
                {tag: "tab", text: "\t"}, {tag: "no-break", text: "\u00a0"}];
        }
        function test_blanksAreNothingToAdd(data) {
            const item = made("fresh", ["uno"]);
            const add = part(item, "add");
            type(item, data.text);
            verify(!add.enabled);
            keyClick(Qt.Key_Return);
            mouseClick(add);
            ScreenReader.perform(add, "Press");
            compare(excludes(), ["uno"]);
            compare(part(item, "field").text, data.text);
            type(item, "x");
            verify(add.enabled);
        }

        function test_theDefaultsComeBack_data() {
            return ways();
        }
        function test_theDefaultsComeBack(data) {
            const item = made("fresh", ["node_modules", "mio"]);
            const kept = chips(item)[0];
            press(part(item, "defaults"), data.way);
            compare(excludes(), defaults);
            compare(chips(item)[8], kept);
        }

        function test_theSwitchIsTheSetting_data() {
            return ways().filter(way => way.tag !== "screen reader").concat([{tag: "toggle"}]);
        }
        function test_theSwitchIsTheSetting(data) {
            const item = made("fresh");
            const control = part(item, "switch");
            verify(control.checked);
            const toggle = () => data.way ? press(control, data.way)
                                          : ScreenReader.perform(control, "Toggle");
            toggle();
            verify(!prepared.model.config.excludeCaches);
            verify(!control.checked);
            toggle();
            verify(prepared.model.config.excludeCaches);
            verify(control.checked);
            compare(ScreenReader.name(control),
                    "Escludi le cartelle di cache marcate con CACHEDIR.TAG");
            compare(ScreenReader.role(control), Accessible.CheckBox);
        }

        function test_theFieldStandsBesideItsButtons() {
            const item = made("fresh");
            const entry = part(item, "entry");
            const field = part(item, "field");
            const place = name => part(item, name).mapToItem(entry, 0, 0);
            compare(field.placeholderText, "Percorso o nome da escludere");
            compare(ScreenReader.name(field), "Percorso o nome da escludere");
            compare(part(item, "add").text, "Aggiungi");
            compare(part(item, "defaults").text, "Predefinite");
            fuzzyCompare(place("add").x, field.width + 10, 1e-6);
            fuzzyCompare(place("defaults").x, place("add").x + part(item, "add").width + 10, 1e-6);
            fuzzyCompare(place("defaults").x + part(item, "defaults").width, 650, 1e-6);
            for (const name of ["field", "add", "defaults"]) {
                fuzzyCompare(place(name).y + part(item, name).height / 2, entry.height / 2, 0.51,
                             name);
            }
        }

        function test_whereItIsNarrowTheButtonsStandBelow_data() {
            return [{tag: "420", width: 420}, {tag: "254", width: 254}];
        }
        function test_whereItIsNarrowTheButtonsStandBelow(data) {
            const item = made("fresh", undefined, {width: data.width});
            const room = data.width - 36;
            const field = part(item, "field");
            compare(field.width, room);
            verify(part(item, "add").mapToItem(item, 0, 0).y
                   >= field.mapToItem(item, 0, field.height).y + 10 - 1e-6);
            for (const name of ["add", "defaults", "switch"]) {
                const one = part(item, name);
                const x = one.mapToItem(item, 0, 0).x;
                verify(x >= 18 && x + one.width <= data.width - 18 + 1e-6, name);
            }
            for (const chip of chips(item)) {
                verify(chip.x + chip.width <= room + 1e-6, chip.text);
            }
            verify(part(item, "caches").mapToItem(item, 0, part(item, "caches").height).y
                   <= item.height);
        }

        function test_aPatternStandsAsItIs_data() {
            return [{tag: "markup", text: "<b>*.tmp</b>"}, {tag: "hyphen", text: "-x"},
                {tag: "emoji", text: "\ud83d\udcf7*"},
                {tag: "right to left", text: "\u05e9\u05dc\u05d5\u05dd"},
                {tag: "slashes", text: "a/b//c"}, {tag: "long", text: "x".repeat(10000)}];
        }
        function test_aPatternStandsAsItIs(data) {
            const item = made("fresh", []);
            type(item, data.text);
            keyClick(Qt.Key_Return);
            tryCompare(part(item, "field"), "text", "");
            compare(excludes(), [data.text]);
            const [chip] = chips(item);
            compare(part(chip, "words").text, data.text);
            compare(part(chip, "words").textFormat, Text.PlainText);
            verify(chip.width <= 320);
            compare(chip.height, 28);
            compare(ScreenReader.faults(root.Window.window), []);
            mouseClick(chip.closing);
            compare(excludes(), []);
        }

        function test_whatResticRefusesStaysInTheFieldWithTheReason() {
            const item = made("fresh", ["uno"]);
            const field = part(item, "field");
            const error = part(item, "error");
            verify(!error.visible);
            type(item, "[a");
            keyClick(Qt.Key_Return);
            verify(error.visible);
            compare(error.text, prepared.model.sources.excludeError);
            verify(error.text !== "");
            compare(field.text, "[a");
            verify(field.activeFocus);
            compare(excludes(), ["uno"]);
            verify(Qt.colorEqual(error.color, Theme.coral));
            compare(ScreenReader.description(field), error.text);
            compare(ScreenReader.faults(root.Window.window), []);
            verify(error.mapToItem(item, 0, 0).y
                   >= part(item, "entry").mapToItem(item, 0, part(item, "entry").height).y);
            keyClick("]");
            compare(field.text, "[a]");
            verify(!error.visible);
            compare(ScreenReader.description(field), "");
            keyClick(Qt.Key_Return);
            tryCompare(field, "text", "");
            compare(excludes(), ["uno", "[a]"]);
        }

        function test_aReasonIsOfWhatStandsInTheField() {
            const item = made("fresh", ["uno"]);
            const error = part(item, "error");
            type(item, "[a");
            keyClick(Qt.Key_Return);
            type(item, "");
            verify(!error.visible);
            item.destroy();
            const other = drawn(panel); // as after a change of page
            verify(!part(other, "error").visible);
            compare(part(other, "field").text, "");
        }

        function test_aWrongExclusionOfTheSettingsIsMarked() {
            const item = made("wrongExclude");
            const marked = chips(item).filter(chip => chip.fault !== "");
            compare(marked.map(chip => chip.text), ["foto [2019"]);
            const [chip] = marked;
            verify(part(chip, "sign").visible);
            compare(ScreenReader.description(chip),
                    "Esclusione non valida: finché c'è, nessun backup riesce.");
            const faults = part(item, "faults");
            verify(faults.visible);
            compare(faults.text, "Un'esclusione non è valida: finché c'è, nessun backup riesce.");
            compare(ScreenReader.role(part(faults, "words")), Accessible.AlertMessage);
            compare(ScreenReader.faults(root.Window.window), []);
            choose(["[a", "b", "[c"]);
            compare(faults.text,
                    "2 esclusioni non sono valide: finché ci sono, nessun backup riesce.");
            Eye.look(root);
            mouseClick(chips(item)[0].closing);
            Eye.look(root); // the others have moved
            mouseClick(chips(item)[1].closing);
            compare(excludes(), ["b"]);
            verify(!faults.visible);
            verify(!part(chips(item)[0], "sign").visible);
        }

        function test_withoutExclusionsNoRoomIsLeftForThem() {
            const item = made("fresh", []);
            verify(!part(item, "chips").visible);
            compare(ScreenReader.faults(root.Window.window), []);
        }
    }
}
