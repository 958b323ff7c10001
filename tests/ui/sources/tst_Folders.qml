pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Sources
import Vellomar.Testing

// The folders that go into the backup, and what they weigh.
Item {
    id: root

    width: 760
    height: 900
    Accessible.role: Accessible.Pane
    Accessible.name: "Cartelle"

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    PreparedModel { id: prepared }
    SourcesView { id: shown; model: prepared.model }

    Component {
        id: panel
        FoldersPanel {
            x: 20
            y: 20
            width: 686
            model: prepared.model
            view: shown
        }
    }

    Case {
        id: testing

        name: "Folders"

        readonly property list<string> three: ["/srv/foto", "/srv/video", "/srv/musica"]

        function prepare() {
            prepared.state = "kit"; // and so back to a new world
            prepared.state = "fresh";
            prepared.takeAsked();
        }

        // The panel of a state, with other folders where there are any.
        function made(state, sources, properties) {
            prepared.state = state;
            if (sources) {
                choose(sources);
            }
            return drawn(panel, properties);
        }

        function choose(sources) {
            const config = prepared.model.config;
            config.sources = sources;
            prepared.model.config = config;
        }

        function sources(): var {
            return Array.from(prepared.model.config.sources);
        }

        function rows(item): var {
            return Array.from(part(item, "list").children).filter(child => child instanceof FolderRow);
        }

        function names(item): var {
            return rows(item).map(row => part(row, "name").text);
        }

        function test_aRowShowsNamePathAndSymbolOfItsFolder() {
            const home = prepared.model.config.sources[0];
            const item = made("fresh", [home, "/Applications", home + "/Foto"]);
            compare(names(item), ["Cartella Inizio", "Applications", "Foto"]);
            compare(rows(item).map(row => part(row, "path").text),
                    [home, "/Applications", home + "/Foto"]);
            compare(rows(item).map(row => part(row, "well").symbol), ["house", "folder", "folder"]);
            for (const row of rows(item)) {
                const well = part(row, "well");
                compare(well.width, 36);
                verify(Qt.colorEqual(well.color, Theme.amber));
                compare(part(row, "remove").symbol, "xmark");
                compare(part(row, "remove").help, "Rimuovi");
            }
            verify(!part(item, "none").visible);
        }

        function test_dividersStandBetweenTheRows() {
            const item = made("fresh", three);
            compare(rows(item).map(row => part(row, "divider").visible), [false, true, true]);
            for (const row of rows(item)) {
                const divider = part(row, "divider");
                compare(divider.y, 0);
                compare(divider.width, 650);
                verify(Qt.colorEqual(divider.color, Theme.line));
            }
            choose(three.slice(1));
            compare(rows(item).map(row => part(row, "divider").visible), [false, true]);
        }

        function test_partsStandWhereTheDesignSays() {
            const item = made("measured", undefined);
            const row = rows(item)[0];
            const place = name => part(row, name).mapToItem(row, 0, 0);
            compare(row.width, 650);
            compare(place("well").x, 0);
            compare(place("name").x, 36 + 12);
            compare(place("path").x, 36 + 12);
            fuzzyCompare(place("path").y - place("name").y - part(row, "name").height, 2, 1e-6);
            compare(place("remove").x + 28, 650);
            const size = part(row, "size");
            fuzzyCompare(place("size").x + size.width, 650 - 28 - 12, 1e-6);
            verify(place("name").x + part(row, "name").width <= place("size").x - 12 + 1e-6);
            for (const name of ["well", "size", "remove"]) {
                fuzzyCompare(place(name).y + part(row, name).height / 2, row.height / 2, 0.51, name);
            }
            verify(row.height >= 56);
        }

        function test_fontsAndColours() {
            const item = made("measured");
            const row = rows(item)[0];
            const isFont = (text, size, weight, colour) => {
                compare(text.font.pixelSize, size);
                compare(text.font.weight, weight);
                compare(String(text.color), String(colour));
            };
            isFont(part(row, "name"), 13, Font.DemiBold, Theme.text);
            isFont(part(row, "path"), 11, Font.Normal, Theme.secondary);
            isFont(part(row, "size"), 13, Font.Normal, Theme.secondary);
            isFont(part(item, "total"), 13, Font.Normal, Theme.secondary);
            compare(part(row, "path").elide, Text.ElideMiddle);
            compare(part(item, "add").kind, PillButton.Kind.Primary);
            compare(part(item, "measure").kind, PillButton.Kind.Outline);
            for (const name of ["name", "path", "size"]) {
                const text = part(row, name);
                const found = Colours.contrast(text.color, Eye.at(text, 1, 1));
                verify(found >= 4.5, "%1: %2".arg(name).arg(found));
            }
        }

        function test_aButtonRemovesItsFolder_data() {
            return ways();
        }
        function test_aButtonRemovesItsFolder(data) {
            const item = made("fresh", three);
            press(part(rows(item)[1], "remove"), data.way);
            compare(sources(), ["/srv/foto", "/srv/musica"]);
            compare(names(item), ["foto", "musica"]);
        }

        function test_theKeyboardGoesOnToTheNeighbour() {
            const item = made("fresh", three);
            const on = () => focused().parent.folder?.path ?? focused().objectName;
            part(rows(item)[1], "remove").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(on(), "/srv/musica");
            verify(focused().ringed);
            keyClick(Qt.Key_Return); // the last one
            compare(on(), "/srv/foto");
            keyClick(Qt.Key_Return); // the only one
            compare(sources(), []);
            compare(on(), "add");
        }

        function test_aKeyThatIsHeldRemovesOneFolder() {
            const item = made("fresh", three);
            part(rows(item)[0], "remove").forceActiveFocus(Qt.TabFocusReason);
            keyPress(Qt.Key_Return);
            compare(sources().length, 2);
            keyRelease(Qt.Key_Return);
            compare(sources().length, 2);
        }

        function test_theMouseLeavesTheKeyboardWhereItIs() {
            const item = made("fresh", three);
            const add = part(item, "add");
            add.forceActiveFocus(Qt.TabFocusReason);
            mouseClick(part(rows(item)[0], "remove"));
            compare(names(item), ["video", "musica"]);
            verify(add.activeFocus);
        }

        function test_aRowKeepsItsItemAndTheKeyboardWhileOthersComeAndGo() {
            const item = made("fresh", three);
            const row = rows(item)[1];
            const button = part(row, "remove");
            button.forceActiveFocus(Qt.TabFocusReason);
            choose(["/srv/nuova", "/srv/video"]);
            compare(rows(item)[1], row);
            verify(button.activeFocus);
            choose(["/srv/video", "/srv/altra", "/srv/foto"]);
            compare(rows(item)[0], row);
            verify(button.activeFocus);
        }

        function test_theSameFolderTwiceIsTwoRows() {
            const item = made("fresh", ["/srv/foto", "/srv/foto"]);
            compare(names(item), ["foto", "foto"]);
        }

        function test_theUserChoosesFoldersToAdd_data() {
            return ways();
        }
        function test_theUserChoosesFoldersToAdd(data) {
            const item = made("fresh", ["/srv/foto"]);
            prepared.chooseFolders(["/srv/video", "/srv/foto", "/srv/musica"]);
            press(part(item, "add"), data.way);
            compare(prepared.takeAsked(), ["folders"]);
            compare(names(item), ["foto", "video", "musica"]);
            prepared.chooseFolders([]); // gives up
            press(part(item, "add"), data.way);
            compare(names(item), ["foto", "video", "musica"]);
        }

        function test_theSizesThatAreKnownStandInTheirRows() {
            const item = made("partlyMeasured");
            compare(rows(item).map(row => part(row, "size").text), ["214 GB", "", ""]);
            verify(!part(item, "total").visible);
            const name = part(rows(item)[1], "name");
            compare(name.width, 650 - 28 - 12 - 48); // what the size doesn't need
            prepared.state = "measured";
            compare(rows(item).map(row => part(row, "size").text), ["214 GB", "48 GB", "4 kB"]);
            compare(part(item, "total").words, "Da salvare 262 GB, esclusioni già tolte");
            verify(part(item, "total").visible);
            choose(three);
            verify(!part(item, "total").visible);
            compare(rows(item).map(row => part(row, "size").text), ["", "", ""]);
        }

        function test_theButtonMeasures_data() {
            return ways();
        }
        function test_theButtonMeasures(data) {
            const item = made("unmeasured");
            const measure = part(item, "measure");
            compare(measure.text, "Misura le cartelle");
            verify(!part(item, "total").visible);
            press(measure, data.way);
            verify(part(item, "total").visible);
            compare(measure.text, "Misura le cartelle");
            verify(measure.enabled);
        }

        function test_aMeasurementIsWatchedInItsButton() {
            const item = made("measuring");
            const measure = part(item, "measure");
            compare(measure.text, "Misura in corso: 37 GB");
            verify(!measure.enabled);
            fuzzyCompare(measure.opacity, 0.38, 1e-6);
            verify(part(item, "add").enabled);
            const spinner = part(item, "spinner");
            verify(spinner.visible && spinner.running);
            const place = spinner.mapToItem(measure, 0, 8);
            fuzzyCompare(place.x, measure.width + 10, 1e-6);
            fuzzyCompare(place.y, measure.height / 2, 0.51);
            compare(ScreenReader.faults(root.Window.window), []);
            compare(ScreenReader.name(measure), "Misura in corso: 37 GB");
            prepared.finish();
            compare(measure.text, "Misura le cartelle");
            verify(measure.enabled);
            verify(!spinner.visible);
        }

        function test_aMeasurementOfOtherFoldersIsOver() {
            const item = made("measuring");
            mouseClick(part(rows(item)[0], "remove"));
            verify(part(item, "measure").enabled);
            compare(part(item, "measure").text, "Misura le cartelle");
        }

        function test_withoutAccessToTheDiskAQuestionComesFirst() {
            const item = made("access");
            mouseClick(part(item, "measure"));
            compare(prepared.model.access.request, DiskAccess.GatedAction.Measure);
            verify(!part(item, "total").visible);
        }

        function test_whatIsNoFolderIsRefusedWithAWord() {
            const item = made("measured");
            const refusal = part(item, "refusal");
            verify(!refusal.visible);
            compare(item.outcome, part(item, "actions"));
            prepared.state = "refusedDrop";
            verify(refusal.visible);
            compare(item.outcome, refusal);
            compare(refusal.text, "\"Lettera alla nonna.odt\" non è una cartella.");
            verify(Qt.colorEqual(refusal.color, Theme.coral));
            const words = part(refusal, "words");
            compare(ScreenReader.role(words), Accessible.AlertMessage);
            compare(ScreenReader.name(words), refusal.text);
            compare(ScreenReader.faults(root.Window.window), []);
            compare(names(item).length, 3);
        }

        function test_manyFoldersEachHaveTheirRow() {
            const item = made("many");
            compare(rows(item).length, prepared.model.config.sources.length);
            const height = rows(item)[0].height;
            rows(item).forEach((row, i) => {
                compare(row.y, i * height);
                compare(row.height, height);
                const name = part(row, "name");
                verify(name.contentWidth <= name.width + 0.5);
                verify(name.x + name.width + 48 <= part(row, "size").x - 12 + 1e-6);
            });
        }

        function test_withoutFoldersASentenceStandsThere() {
            const item = made("fresh", []);
            const none = part(item, "none");
            verify(none.visible);
            compare(none.words, "Nessuna cartella: il backup non ha niente da salvare. Aggiungine "
                    + "una, o trascinala in questa pagina.");
            verify(!part(item, "list").visible);
            verify(!part(item, "total").visible);
            compare(ScreenReader.faults(root.Window.window), []);
            choose(["/srv/foto"]);
            verify(!none.visible);
            compare(names(item), ["foto"]);
        }

        function oddNames() {
            return [
                {tag: "line feed", path: "/srv/una\nriga", name: "una riga", line: "/srv/una riga"},
                {tag: "carriage return", path: "/srv/a\r\nb", name: "a b", line: "/srv/a b"},
                {tag: "right to left", path: "/srv/\u05e9\u05dc\u05d5\u05dd"},
                {tag: "emoji", path: "/srv/\ud83d\udcf7 foto"},
                {tag: "markup", path: "/srv/<b>&amp;</b>", name: "b>"},
                {tag: "blanks", path: "/srv/   ", name: "Cartella senza nome"},
                {tag: "long", path: "/srv/" + "x".repeat(10000), cut: true},
                {tag: "long path", path: "/srv/" + "cartella/".repeat(1111) + "fine", name: "fine"}];
        }
        function test_oddNamesStayWithinTheirRow_data() {
            return oddNames();
        }
        function test_oddNamesStayWithinTheirRow(data) {
            const item = made("fresh", ["/srv/normale", data.path]);
            const [plain, row] = rows(item);
            compare(row.height, plain.height);
            compare(row.width, 650);
            const name = part(row, "name");
            compare(name.text, data.name ?? data.path.slice(5));
            compare(part(row, "path").text, data.line ?? data.path);
            for (const text of [name, part(row, "path")]) {
                compare(text.textFormat, Text.PlainText);
                compare(text.lineCount, 1);
                compare(text.effectiveHorizontalAlignment, Text.AlignLeft);
                verify(text.contentWidth <= text.width + 0.5);
            }
            compare(name.truncated, data.cut ?? false);
            compare(ScreenReader.faults(root.Window.window), []);
            mouseClick(part(row, "remove"));
            compare(sources(), ["/srv/normale"]);
        }

        function test_aPathThatIsCutHasATooltip() {
            const path = "/srv/" + "cartella/".repeat(20) + "fine";
            const item = made("fresh", ["/srv/foto", path]);
            const [plain, cut] = rows(item);
            for (const [row, shown] of [[plain, false], [cut, true]]) {
                const tip = findChild(row, "tip");
                tip.delay = 0;
                mouseMove(part(row, "path"), 40, 5);
                wait(0);
                compare(tip.visible, shown);
                mouseMove(root, 1, 1);
                tryVerify(() => !tip.visible);
            }
            compare(findChild(cut, "tip").text, path);
        }

        function test_aRowIsHeardWithItsPathAndItsSize() {
            const item = made("measured");
            const list = part(item, "list");
            compare(ScreenReader.role(list), Accessible.List);
            compare(ScreenReader.name(list), "Cartelle salvate");
            const row = rows(item)[0];
            const path = prepared.model.config.sources[0];
            compare(ScreenReader.role(row), Accessible.ListItem);
            compare(ScreenReader.name(row), "Cartella Inizio: " + path);
            compare(ScreenReader.description(row), part(row, "size").text);
            compare(ScreenReader.name(part(row, "remove")), "Rimuovi: " + path);
            compare(ScreenReader.role(part(row, "remove")), Accessible.Button);
            compare(ScreenReader.name(item), "Cartelle salvate");
            compare(ScreenReader.faults(root.Window.window), []);
        }
    }
}
