pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Sources
import Vellomar.Testing

Item {
    id: root

    width: 980
    height: 660

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    PreparedModel { id: prepared }

    Component {
        id: page
        SourcesPage {
            width: 758
            height: 660
            model: prepared.model
        }
    }

    Case {
        name: "Page"

        function prepare() {
            prepared.state = "kit"; // and so back to a new world
            prepared.state = "fresh";
            prepared.takeAsked();
        }

        function made(state, properties) {
            prepared.state = state;
            return drawn(page, properties);
        }

        function chooseSources(sources) {
            const config = prepared.model.config;
            config.sources = sources;
            prepared.model.config = config;
        }

        function test_itsHeader() {
            const item = made("fresh");
            compare(item.title, "Cartelle");
            compare(item.subtitle, "Cartelle incluse nel backup");
            compare(part(item, "folders").title, "Cartelle salvate");
            compare(part(item, "exclusions").title, "Esclusioni");
        }

        function test_everyMeasureInSeveralWindows_data() {
            return [{tag: "758x660", width: 758, height: 660, column: 686},
                {tag: "1378x1000", width: 1378, height: 1000, column: 860},
                {tag: "980x660", width: 980, height: 660, column: 860},
                {tag: "418x380", width: 418, height: 380, column: 346},
                {tag: "290x300", width: 290, height: 300, column: 218}];
        }
        function test_everyMeasureInSeveralWindows(data) {
            const item = made("measured", {width: data.width, height: data.height});
            compare(item.contentWidth, data.width);
            const folders = part(item, "folders");
            const exclusions = part(item, "exclusions");
            const place = one => one.mapToItem(item.contentItem, 0, 0);
            for (const panel of [folders, exclusions]) {
                compare(place(panel).x, 36);
                compare(panel.width, data.column);
            }
            fuzzyCompare(place(exclusions).y - place(folders).y - folders.height, 16, 1e-6);
            fuzzyCompare(item.contentHeight - place(exclusions).y - exclusions.height, 30, 1e-6);
            // Nothing is wider than its panel, and nothing stands on anything else.
            for (const panel of [folders, exclusions]) {
                for (const text of textItems(panel)) {
                    const left = text.mapToItem(panel, 0, 0).x;
                    verify(left >= 18 - 1e-6 && left + text.width <= data.column - 18 + 1e-6,
                           text.text);
                    verify(text.truncated || text.contentWidth <= text.width + 0.5, text.text);
                }
            }
            const names = ["list", "actions"];
            let end = 0;
            for (const name of names) {
                const one = part(folders, name);
                fuzzyCompare(one.y, end === 0 ? 0 : end + 14, 1e-6, name);
                end = one.y + one.height;
            }
        }

        function test_theTotalStandsAtTheEndOrBelow_data() {
            return [{tag: "beside", width: 980, below: false},
                {tag: "below", width: 480, below: true}];
        }
        function test_theTotalStandsAtTheEndOrBelow(data) {
            const item = made("measured", {width: data.width});
            const actions = part(item, "actions");
            const total = part(item, "total");
            const measure = part(item, "measure").mapToItem(actions, 0, 0);
            const place = total.mapToItem(actions, 0, 0);
            if (data.below) {
                compare(place.x, 0);
                verify(place.y >= measure.y + part(item, "measure").height + 10 - 1e-6);
            } else {
                fuzzyCompare(place.x + total.width, actions.width, 1e-6);
                fuzzyCompare(place.y + total.height / 2,
                             measure.y + part(item, "measure").height / 2, 0.51);
                verify(place.x >= measure.x + part(item, "measure").width + 16 - 1e-6);
            }
            verify(place.y + total.height <= actions.height + 1e-6);
        }

        function test_theTabKeyGoesByWhatCanBeDone() {
            const item = made("fresh");
            const order = [];
            for (let i = 0; i < 17; ++i) {
                keyClick(Qt.Key_Tab);
                const on = focused();
                order.push(on.objectName === "cross" ? on.parent.text
                           : on.objectName === "remove" ? on.parent.folder.name : on.objectName);
                const place = on.mapToItem(item, 0, 0);
                verify(place.y >= 0 && place.y + on.height <= 660, order[i]);
            }
            compare(order, ["Cartella Inizio", "Applications", "add", "measure", "~/.Trash",
                "~/Library/Caches", "~/Library/Logs", "~/Library/Mobile Documents",
                "~/Library/CloudStorage", "~/Library/Developer/Xcode/DerivedData",
                "~/Library/Developer/CoreSimulator", "~/Library/Containers/com.docker.docker",
                "node_modules", ".pnpm-store", "field", "defaults", "switch"]);
            keyClick(Qt.Key_Backtab);
            compare(focused().objectName, "defaults");
        }

        function test_theScreenReaderMeetsAllInOrder() {
            const item = made("fresh");
            const home = prepared.model.config.sources[0];
            const names = ScreenReader.tree(item).map(line => line.slice(line.indexOf(": ") + 2));
            const chips = Array.from(prepared.model.config.excludes).reduce(
                (all, pattern) => all.concat([pattern, "Rimuovi: " + pattern]), []);
            compare(names, ["Cartelle", "Cartelle", "Cartelle incluse nel backup",
                "Cartelle salvate", "Cartelle salvate", "Cartelle salvate",
                "Cartella Inizio: " + home, "Rimuovi: " + home,
                "Applications: /Applications", "Rimuovi: /Applications", "Aggiungi cartella",
                "Misura le cartelle", "Esclusioni", "Esclusioni",
                "Percorsi o nomi esclusi dal backup. Un nome senza barre, come node_modules, vale "
                + "in ogni cartella.", "Esclusioni"].concat(chips).concat([
                "Percorso o nome da escludere", "Aggiungi", "Predefinite",
                "Escludi le cartelle di cache marcate con CACHEDIR.TAG",
                "Escludi le cartelle di cache marcate con CACHEDIR.TAG"]));
            compare(ScreenReader.faults(root.Window.window), []);
        }

        function test_foldersCanBeDroppedAnywhere_data() {
            return [{tag: "header", x: 300, y: 60}, {tag: "list", x: 200, y: 200},
                {tag: "field", x: 200, y: 640}, {tag: "edge", x: 755, y: 655}];
        }
        function test_foldersCanBeDroppedAnywhere(data) {
            const item = made("fresh");
            const frame = part(part(item, "target"), "frame");
            verify(!frame.visible);
            verify(FileManager.drag(item, data.x, data.y, ["file:///srv/una%20nuova"]));
            verify(frame.visible);
            compare(FileManager.drop(item, data.x, data.y), Qt.CopyAction);
            verify(!frame.visible);
            compare(prepared.model.config.sources.length, 3);
            compare(prepared.model.config.sources[2], "/srv/una nuova");
        }

        function test_whereTheFrameStandsDoesntScroll() {
            const item = made("many");
            item.contentY = 500;
            FileManager.drag(item, 300, 300, ["file:///srv/nuova"]);
            const frame = part(part(item, "target"), "frame");
            const place = frame.mapToItem(item, 0, 0);
            compare(place.x, 10);
            compare(place.y, 10);
            compare(frame.width, 758 - 20);
            compare(frame.height, 660 - 20);
            FileManager.leave(item);
            verify(!frame.visible);
        }

        function test_whatBecameOfADropIsScrolledIntoSight() {
            const item = made("many");
            item.contentY = item.contentHeight - 660;
            const folders = part(item, "folders");
            const isSeen = one => {
                const y = one.mapToItem(item, 0, 0).y;
                return y >= 0 && y + one.height <= 660;
            };
            FileManager.drag(item, 300, 300, ["file:///srv/nuova"]);
            FileManager.drop(item, 300, 300);
            tryVerify(() => isSeen(part(folders, "actions")));
            item.contentY = 0;
            FileManager.drag(item, 300, 300, ["https://example.org/x"]);
            FileManager.drop(item, 300, 300);
            verify(part(folders, "refusal").visible);
            tryVerify(() => isSeen(part(folders, "refusal")));
            // Folders that come otherwise don't move the page.
            item.contentY = 0;
            prepared.chooseFolders(["/srv/ancora"]);
            prepared.model.addSources();
            wait(0);
            compare(item.contentY, 0);
        }

        function test_aRefusalGoesWithThePage() {
            const first = made("refusedDrop");
            verify(part(first, "refusal").visible);
            first.destroy();
            tryCompare(prepared.model.sources, "refusal", "");
            verify(!part(drawn(page), "refusal").visible);
        }

        function test_aMeasurementOutlivesThePage() {
            const first = made("measuring");
            first.destroy();
            const second = drawn(page);
            compare(part(second, "measure").text, "Misura in corso: 37 GB");
            verify(!part(second, "measure").enabled);
        }

        function test_thePagesOfAllStatesAreHeardWhole_data() {
            return prepared.sourcesStates.map(state => ({tag: state}));
        }
        function test_thePagesOfAllStatesAreHeardWhole(data) {
            made(data.tag, {height: 4000});
            compare(ScreenReader.faults(root.Window.window), []);
        }

        function test_itScrollsByWheelAndKeys() {
            const item = made("fresh", {height: 300});
            verify(item.interactive);
            mouseWheel(item, 100, 100, 0, -600);
            tryVerify(() => item.contentY > 0);
            item.forceActiveFocus();
            keyClick(Qt.Key_End);
            compare(item.contentY, item.contentHeight - 300);
            keyClick(Qt.Key_Home);
            compare(item.contentY, 0);
        }

        function test_manyFoldersAndExclusionsScroll() {
            const item = made("fresh");
            chooseSources(Array.from({length: 300}, (_, i) => "/srv/" + i));
            const config = prepared.model.config;
            config.excludes = Array.from({length: 300}, (_, i) => "modello " + i);
            prepared.model.config = config;
            Eye.look(root);
            verify(item.contentHeight > 300 * 50);
            part(item, "switch").forceActiveFocus(Qt.TabFocusReason);
            const place = part(item, "switch").mapToItem(item, 0, 0);
            verify(place.y >= 0 && place.y + part(item, "switch").height <= 660);
        }
    }
}
