pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview
import Vellomar.Prepared
import Vellomar.Testing

Item {
    id: root

    width: 480
    height: 320

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    PreparedModel { id: prepared }
    Summary { id: summed; model: prepared.model }

    Component {
        id: tiles
        Column {
            x: 40
            y: 40
            width: 384
            spacing: 12
            Repeater {
                model: summed.destinationRows
                DestinationTile {
                    required property destinationState value

                    width: 384
                    model: prepared.model
                    destination: value
                }
            }
        }
    }

    Case {
        name: "Tiles"

        function prepare() {
            prepared.state = "fresh";
            prepared.model.section = AppModel.Section.Overview;
        }

        // The tile of a destination in a state.
        function made(state, destination) {
            prepared.state = state;
            return drawn(tiles).children[destination];
        }

        function test_titleStateAndVersions_data() {
            const local = DestinationID.Local;
            const drive = DestinationID.Drive;
            const server = DestinationID.Server;
            return [
                {tag: "off", state: "fresh", place: local, title: "Disco esterno",
                    text: "Non attiva", colour: Theme.white(0.35)},
                {tag: "off with versions", state: "single", place: drive, title: "Google Drive",
                    text: "Non attiva", colour: Theme.white(0.35)},
                {tag: "before the first", state: "waiting", place: drive, title: "Google Drive",
                    text: "In attesa del primo backup", colour: Theme.amber, count: "0",
                    unit: "versioni"},
                {tag: "many", state: "well", place: local, title: "Disco esterno",
                    text: "Backup 24 minuti fa", colour: Theme.mint, count: "41",
                    unit: "versioni"},
                {tag: "one", state: "well", place: server, title: "Server privato",
                    text: "Backup 12 minuti fa", colour: Theme.mint, count: "1",
                    unit: "versione"},
                {tag: "failed", state: "failed", place: drive, title: "Google Drive",
                    text: "Ultimo backup non riuscito", colour: Theme.coral, count: "18",
                    unit: "versioni"},
                {tag: "unreadable", state: "failed", place: server, title: "Server privato",
                    text: "Fatal: unable to open repository: connection refused",
                    colour: Theme.amber}];
        }
        function test_titleStateAndVersions(data) {
            const tile = made(data.state, data.place);
            compare(part(tile, "title").text, data.title);
            compare(part(tile, "state").text, data.text);
            compare(part(tile, "state").color, data.colour);
            compare(part(tile, "versions").visible, data.count !== undefined);
            compare(part(tile, "chevron").visible, data.count === undefined);
            if (data.count !== undefined) {
                compare(part(tile, "count").text, data.count);
                compare(part(tile, "unit").text, data.unit);
                compare(ScreenReader.description(tile), data.count + " " + data.unit);
            }
            compare(ScreenReader.role(tile), Accessible.Button);
            compare(ScreenReader.name(tile), data.title + ": " + data.text);
            compare(ScreenReader.faults(root.Window.window), []);
        }

        function test_aDestinationInUseOfWhichNothingIsKnownHasAChevron() {
            const tile = made("waiting", DestinationID.Server);
            const config = prepared.model.config;
            config.serverEnabled = true;
            prepared.model.config = config;
            verify(prepared.model.repositories.destinations[2].enabled);
            verify(!prepared.model.repositories.destinations[2].known);
            verify(part(tile, "chevron").visible);
            verify(!part(tile, "versions").visible);
        }

        function test_versionsOfADestinationOutOfUseAreNotCounted() {
            const tile = made("well", DestinationID.Local);
            verify(part(tile, "versions").visible);
            const config = prepared.model.config;
            config.localEnabled = false;
            prepared.model.config = config;
            verify(prepared.model.repositories.destinations[0].known);
            verify(part(tile, "chevron").visible);
        }

        function test_eachHasItsSymbol() {
            prepared.state = "fresh";
            const column = createTemporaryObject(tiles, root);
            const symbols = [0, 1, 2].map(i => part(column.children[i], "well").symbol);
            compare(symbols, ["externaldrive", "cloud", "server.rack"]);
            for (const i of [0, 1, 2]) {
                const well = part(column.children[i], "well");
                compare(well.width, 36);
                compare(well.height, 36);
                compare(well.points, 15);
                compare(well.color, Theme.amber);
            }
        }

        function test_itsPartsStandWhereTheDesignSays() {
            const tile = made("well", DestinationID.Local);
            const place = name => part(tile, name).mapToItem(tile, 0, 0);
            compare(tile.width, 384);
            compare(place("well").x, 14);
            const high = Math.max(36, part(tile, "title").height + 4 + part(tile, "state").height);
            compare(tile.height, high + 22);
            compare(place("title").x, 14 + 36 + 12);
            compare(place("state").y - place("title").y - part(tile, "title").height, 4);
            const versions = part(tile, "versions");
            fuzzyCompare(place("versions").x + versions.width, 384 - 14, 1e-6);
            fuzzyCompare(place("count").x + part(tile, "count").width, 384 - 14, 1e-6);
            fuzzyCompare(place("unit").x + part(tile, "unit").width, 384 - 14, 1e-6);
            verify(place("title").x + part(tile, "title").width <= place("versions").x - 12 + 1e-6);
        }

        function test_itsFontsAndColours() {
            const tile = made("well", DestinationID.Local);
            const title = part(tile, "title");
            compare(title.font.pixelSize, 14);
            compare(title.font.weight, Font.DemiBold);
            compare(part(tile, "count").font.pixelSize, 17);
            compare(part(tile, "count").font.weight, Font.DemiBold);
            compare(part(tile, "unit").font.pixelSize, 11);
            compare(String(part(tile, "unit").color), String(Theme.secondary));
            const chevron = part(made("fresh", 0), "chevron");
            compare(chevron.name, "chevron.right");
            compare(chevron.points, 11);
            compare(chevron.weight, Font.DemiBold);
            compare(chevron.color, Theme.tertiary);
        }

        function test_itIsARaisedBlockThatLiftsUnderThePointer() {
            const tile = made("well", DestinationID.Local);
            compare(tile.background.radius, 14);
            const middle = 40 + tile.height / 2;
            looks(root, 300, middle, Colours.over(0.2, 1, 0.08));
            mouseMove(tile, 200, 20);
            tryCompare(tile.background, "lifted", true);
            Eye.look(root);
            looks(root, 300, middle, Colours.over(0.2, 1, 0.08 + 0.06));
            mouseMove(root, 1, 1);
            tryCompare(tile.background, "lifted", false);
        }

        function test_hoveringEasesIn() {
            const tile = made("well", DestinationID.Local);
            Motion.still = false;
            tile.hovering = true;
            verify(tile.background.lift < 1);
            tryCompare(tile.background, "lift", 1);
        }

        function test_theDotHasTheColourOfTheState() {
            const tile = made("failed", DestinationID.Drive);
            const state = part(tile, "state");
            looks(state, 3.5, state.height / 2, Colours.coral);
        }

        function test_aClickLeadsToTheDestinations_data() {
            return [{tag: "0"}, {tag: "1"}, {tag: "2"}];
        }
        function test_aClickLeadsToTheDestinations(data) {
            const tile = made("well", Number(data.tag));
            mouseClick(tile);
            compare(prepared.model.section, AppModel.Section.Destinations);
        }

        function test_keysAndTheScreenReaderPressItToo() {
            const tile = made("fresh", 1);
            for (const {tag, way} of ways()) {
                press(tile, way);
                compare(prepared.model.section, AppModel.Section.Destinations, tag);
                prepared.model.section = AppModel.Section.Overview;
            }
        }

        function test_theRingShowsForTheKeyboardOnly() {
            const tile = made("fresh", 0);
            mouseClick(tile);
            verify(!tile.ringed);
            tile.forceActiveFocus(Qt.TabFocusReason);
            verify(tile.ringed);
            keyClick(Qt.Key_Tab);
            verify(focused().ringed);
        }

        function test_theTilesKeepTheirItemsDuringARun() {
            const tile = made("running", 1);
            tile.forceActiveFocus(Qt.TabFocusReason);
            mouseMove(tile, 20, 20);
            tryCompare(tile, "hovering", true);
            for (const percent of [0.5, 0.6, 0.7]) {
                prepared.setPercent(percent);
            }
            prepared.state = "well";
            wait(0);
            verify(tile.activeFocus);
            verify(tile.ringed);
            verify(tile.hovering);
            compare(part(tile, "count").text, "18");
        }

        function test_theFocusedTileStaysWhileItsDataChange() {
            const tile = made("well", DestinationID.Drive);
            tile.forceActiveFocus(Qt.TabFocusReason);
            const config = prepared.model.config;
            config.localEnabled = false;
            config.driveEnabled = false;
            prepared.model.config = config;
            compare(part(tile, "state").text, "Non attiva");
            compare(tile.parent.children[DestinationID.Drive], tile);
            verify(tile.activeFocus);
            verify(tile.ringed);
        }

        function test_aLongErrorIsCutWithinItsLine() {
            const tile = made("long", DestinationID.Server);
            compare(tile.width, 384);
            compare(tile.height, tile.parent.children[0].height);
            const state = part(tile, "state");
            const label = part(state, "words");
            verify(label.truncated);
            compare(label.textFormat, Text.PlainText);
            const end = label.mapToItem(tile, label.width, 0).x;
            verify(end <= part(tile, "chevron").mapToItem(tile, 0, 0).x - 12 + 1e-6, end);
        }
    }
}
