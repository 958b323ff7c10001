import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Testing
import Vellomar.Window

Item {
    id: root

    width: 500
    height: 600

    PreparedModel { id: prepared }
    Summary { id: summary; model: prepared.model }

    MenuPanel {
        id: panel

        width: implicitWidth
        height: implicitHeight
        model: prepared.model
        summary: summary
    }

    SignalSpy { id: windows; target: panel; signalName: "windowAsked" }
    SignalSpy { id: quits; target: panel; signalName: "quitAsked" }

    Case {
        name: "Panel"
        aside: Qt.point(450, 590)

        readonly property var local: ["Disco esterno", "externaldrive"]
        readonly property var drive: ["Google Drive", "cloud"]
        readonly property var server: ["Server privato", "server.rack"]

        function prepare() {
            show("fresh");
            prepared.takeAsked();
            windows.clear();
            quits.clear();
        }

        function show(state) {
            prepared.state = state === "fresh" ? "well" : "fresh"; // undoes what a test has set
            prepared.state = state;
            look();
        }

        function look() {
            Eye.look(root);
            mouseMove(root, 450, 590);
        }

        function configure(values) {
            const config = prepared.model.config;
            for (const name in values) {
                config[name] = values[name];
            }
            prepared.model.config = config;
            look();
        }

        function rows() {
            return Array.from(part(panel, "top").parent.children).filter(c => c as MenuPanelRow);
        }

        function rightOf(item) {
            return item.x + item.width;
        }

        // The ground of the panel at a height of it.
        function ground(y) {
            return Colours.part(Colours.ground, (y + 0.5) / panel.height);
        }

        function test_itIs330WideAndAsHighAsItsContent_data() {
            return [{tag: "fresh", rows: 2}, {tag: "single", rows: 1}, {tag: "well", rows: 3},
                {tag: "running", rows: 3}, {tag: "long", rows: 3}];
        }
        function test_itIs330WideAndAsHighAsItsContent(data) {
            show(data.tag);
            compare(panel.width, 330);
            compare(rows().length, data.rows);
            const top = part(panel, "top");
            const buttons = part(panel, "buttons");
            compare(top.mapToItem(panel, 0, 0), Qt.point(12, 12));
            compare(top.width, 306);
            let y = 12 + top.height;
            for (const row of rows().concat([buttons])) {
                compare(row.mapToItem(panel, 0, 0), Qt.point(12, y + 10));
                compare(row.width, 306);
                y += 10 + row.height;
            }
            compare(panel.height, y + 12);
        }

        function test_itsGroundFadesDownwards() {
            for (const y of [3, panel.height - 3]) {
                looks(panel, 3, y, ground(y));
            }
        }

        function test_theFirstBlockHoldsTheDialAndTheState() {
            const top = part(panel, "top");
            const dial = part(panel, "dial");
            const eyebrow = part(panel, "eyebrow");
            compare(dial.diameter, 86);
            compare(dial.width, 86);
            compare(dial.mapToItem(top, 0, 0), Qt.point(14, 14));
            compare(top.height, 86 + 28);
            compare(eyebrow.mapToItem(top, 0, 0).x, 14 + 86 + 14);
            const headline = part(panel, "headline");
            compare(headline.y, eyebrow.height + 4);
            compare(part(panel, "detail").y, headline.y + headline.height + 4);
            compare(headline.font.pixelSize, 17);
            compare(headline.font.weight, Font.DemiBold);
            compare(part(panel, "detail").font.pixelSize, 11);
            compare(String(part(panel, "detail").color), String(Theme.secondary));
        }

        function test_theBlocksAreRaised() {
            for (const block of [part(panel, "top")].concat(rows())) {
                const y = Math.floor(block.height / 2) + 4;
                const opacity = 0.105 - 0.05 * (y + 0.5) / block.height;
                looks(block, 298, y, Colours.over(ground(block.mapToItem(panel, 0, y).y), 1,
                                                  opacity));
            }
        }

        function test_itReportsHowTheBackupsStand_data() {
            return [
                {tag: "fresh", eyebrow: "Ultimo backup", headline: "Nessuno",
                 detail: "Nessuna destinazione configurata."},
                {tag: "kit", eyebrow: "Ultimo backup", headline: "Nessuno",
                 detail: "Salva il kit di recupero per avviare i backup."},
                {tag: "waiting", eyebrow: "Ultimo backup", headline: "Nessuno",
                 detail: "Backup automatico ogni ora."},
                {tag: "well", eyebrow: "Ultimo backup", headline: "12 minuti fa",
                 detail: "Backup automatico ogni ora."},
                {tag: "launching", eyebrow: "Ultimo backup", headline: "12 minuti fa",
                 detail: "Backup automatico ogni ora."},
                {tag: "running", eyebrow: "Backup in corso", headline: "42% su Google Drive",
                 detail: "Copia dei file"},
                {tag: "scanning", eyebrow: "Backup in corso", headline: "0% su Google Drive",
                 detail: "Analisi dei file"},
                {tag: "staleRunning", eyebrow: "Backup in corso", headline: "42% su Google Drive",
                 detail: "Copia dei file"}
            ];
        }
        function test_itReportsHowTheBackupsStand(data) {
            show(data.tag);
            compare(part(panel, "eyebrow").text, data.eyebrow);
            compare(part(panel, "headline").text, data.headline);
            compare(part(panel, "detail").words, data.detail);
            const lines = ScreenReader.tree(panel);
            verify(lines.includes("Heading: " + data.eyebrow));
            verify(lines.includes("StaticText: " + data.headline));
            verify(lines.includes("StaticText: " + data.detail));
        }

        function test_itsWordsStandOutFromTheirGround() {
            for (const name of ["eyebrow", "detail"]) {
                const text = part(panel, name);
                const found = Colours.contrast(text.color, Eye.at(text, text.width - 1, 1));
                verify(found >= 4.5, "%1: %2".arg(name).arg(found));
            }
        }

        function test_itReportsTheHoursBetweenBackups_data() {
            return [
                {tag: "one", set: {intervalHours: 1}, detail: "Backup automatico ogni ora."},
                {tag: "two", set: {intervalHours: 2}, detail: "Backup automatico ogni 2 ore."},
                {tag: "a day", set: {intervalHours: 24}, detail: "Backup automatico ogni 24 ore."},
                {tag: "never", set: {autoBackup: false}, detail: "Backup automatico disattivato."},
                {tag: "no key", set: {autoBackup: false, keySaved: false},
                 detail: "Salva il kit di recupero per avviare i backup."}
            ];
        }
        function test_itReportsTheHoursBetweenBackups(data) {
            show("well");
            configure(data.set);
            compare(part(panel, "detail").words, data.detail);
        }

        function test_aPercentIsNeverRoundedUp_data() {
            return [{percent: 0.999, text: "99% su Google Drive"},
                {percent: 1, text: "100% su Google Drive"},
                {percent: 0.0099, text: "0% su Google Drive"},
                {percent: 0.295, text: "29% su Google Drive"}];
        }
        function test_aPercentIsNeverRoundedUp(data) {
            show("running");
            prepared.setPercent(data.percent);
            compare(part(panel, "headline").text, data.text);
        }

        function test_itHasARowForEachDestinationInUse_data() {
            return [
                {tag: "none", set: {}, rows: [local, drive]},
                {tag: "server", set: {serverEnabled: true}, rows: [server]},
                {tag: "drive", set: {driveEnabled: true}, rows: [drive]},
                {tag: "local and server", set: {localEnabled: true, serverEnabled: true},
                 rows: [local, server]},
                {tag: "all", set: {localEnabled: true, driveEnabled: true, serverEnabled: true},
                 rows: [local, drive, server]}
            ];
        }
        function test_itHasARowForEachDestinationInUse(data) {
            configure(data.set);
            compare(rows().map(r => [part(r, "title").text, part(r, "well").symbol]),
                    data.rows);
        }

        function test_aRowStaysWhenAnotherComesOrGoes() {
            show("well");
            const [first, second, third] = rows();
            configure({driveEnabled: false});
            compare(rows(), [first, third]);
            configure({driveEnabled: true});
            compare(rows()[0], first);
            compare(rows()[2], third);
            compare(part(rows()[1], "title").text, drive[0]);
        }

        function test_aRowHasRoomAroundItsParts() {
            show("well");
            for (const row of rows()) {
                const well = part(row, "well");
                const title = part(row, "title");
                const state = part(row, "state");
                compare(well.size, 30);
                compare(well.width, 30);
                compare(well.height, 30);
                compare(well.points, 13);
                compare(String(well.color), String(Theme.amber));
                compare(well.x, 11);
                compare(title.mapToItem(row, 0, 0).x, 11 + 30 + 11);
                compare(title.font.pixelSize, 12);
                compare(title.font.weight, Font.DemiBold);
                compare(state.y, title.height + 2);
                compare(row.height, Math.max(30, state.y + state.height) + 18);
                looks(well, 15, 4, Colours.over(Colours.over(
                        ground(row.mapToItem(panel, 0, well.y + 4).y), 1,
                        0.105 - 0.05 * (well.y + 4.5) / row.height), 0.03, 0.25));
            }
        }

        function test_aRowReportsTheStateOfItsDestination() {
            show("failed");
            for (const row of rows()) {
                const destination = row.destination;
                const state = part(row, "state");
                compare(state.text, destination.stateText);
                const colours = [null, Colours.amber, Colours.coral, Colours.mint];
                const colour = colours[destination.stateTone];
                if (colour) {
                    looks(state, 3.5, state.height / 2, colour);
                }
            }
            compare(part(rows()[1], "state").text, "Ultimo backup non riuscito");
            compare(prepared.model.repositories.destinations[1].stateTone, Tone.Wrong);
        }

        function test_withNothingSetUpItOffersNoBackup() {
            const start = part(panel, "start");
            verify(start.visible);
            verify(!start.enabled);
            compare(start.text, "Esegui backup");
            compare(start.kind, PillButton.Kind.Primary);
            mouseClick(start);
            compare(prepared.takeAsked(), []);
            verify(!part(panel, "stop").visible);
        }

        function test_withoutASavedKeyItStillOffersOne() {
            show("kit");
            verify(part(panel, "start").enabled);
            mouseClick(part(panel, "start"));
            verify(prepared.model.kit.showing);
            // It opens in the window, which may be hidden.
            compare(windows.count, 1);
            prepared.model.kit.showing = false;
        }

        function test_whatKeepsABackupFromStartingIsShownInTheWindow_data() {
            return [{tag: "access"}, {tag: "support"}];
        }
        function test_whatKeepsABackupFromStartingIsShownInTheWindow(data) {
            show(data.tag);
            mouseClick(part(panel, "start"));
            compare(windows.count, 1);
            verify(!prepared.takeAsked().includes("start"));
            prepared.model.access.request = DiskAccess.GatedAction.None;
        }

        function test_whatIsFoundOnlyAfterAWhileIsShownInTheWindowToo() {
            show("well");
            mouseClick(part(panel, "start"));
            compare(windows.count, 0);
            prepared.model.backupHindered();
            compare(windows.count, 1);
        }

        function test_whileTheKeyringIsWaitedForItOffersNone() {
            show("starting");
            verify(part(panel, "start").visible && !part(panel, "start").enabled);
            compare(part(panel, "detail").words, "In attesa del Portachiavi.");
        }

        function test_itStartsABackup_data() {
            return ways();
        }
        function test_itStartsABackup(data) {
            show("well");
            verify(part(panel, "start").enabled);
            press(part(panel, "start"), data.way);
            verify(prepared.takeAsked().includes("start"));
            compare(windows.count, 0);
        }

        function test_whileOneIsLaunchedItOffersNoOther() {
            show("launching");
            verify(part(panel, "start").visible);
            verify(!part(panel, "start").enabled);
            verify(!part(panel, "stop").visible);
        }

        function test_whileOneRunsItOffersToStopIt() {
            show("running");
            const stop = part(panel, "stop");
            verify(!part(panel, "start").visible);
            verify(stop.visible && stop.enabled);
            compare(stop.text, "Interrompi");
            compare(stop.kind, PillButton.Kind.Outline);
            mouseClick(stop);
            compare(prepared.takeAsked(), ["stop"]);
            show("well");
            verify(part(panel, "start").visible && !stop.visible);
        }

        function test_itOpensTheWindow() {
            const open = part(panel, "open");
            compare(open.text, "Apri Vellomar");
            compare(open.kind, PillButton.Kind.Quiet);
            mouseClick(open);
            compare(windows.count, 1);
            press(open, Qt.Key_Return);
            compare(windows.count, 2);
            compare(quits.count, 0);
        }

        function test_itEndsTheProgram() {
            const power = part(panel, "power");
            compare(power.symbol, "power");
            compare(power.help, "Esci da Vellomar");
            compare(ScreenReader.name(power), "Esci da Vellomar");
            mouseClick(power);
            compare(quits.count, 1);
            press(power, Qt.Key_Space);
            compare(quits.count, 2);
        }

        function test_theButtonsStandInOneRow_data() {
            return [{tag: "well", first: "start"}, {tag: "running", first: "stop"}];
        }
        function test_theButtonsStandInOneRow(data) {
            show(data.tag);
            const first = part(panel, data.first);
            compare(first.x, 0);
            compare(first.font.pixelSize, 13);
            verify(part(panel, "open").x >= rightOf(first));
            verify(part(panel, "power").x >= rightOf(part(panel, "open")));
            compare(rightOf(part(panel, "power")), part(panel, "buttons").width);
        }

        function test_theKeyboardGoesThroughTheButtonsInOrder() {
            show("well");
            part(panel, "power").forceActiveFocus(Qt.TabFocusReason);
            for (const name of ["start", "open", "power"]) {
                keyClick(Qt.Key_Tab);
                verify(part(panel, name).activeFocus, name);
                verify(part(panel, name).ringed, name);
            }
        }

        function test_aLongHeadlineShrinks() {
            const headline = part(panel, "headline");
            compare(headline.fontSizeMode, Text.HorizontalFit);
            compare(headline.minimumPixelSize, Math.round(0.7 * 17));
            compare(headline.maximumLineCount, 1);
            show("running");
            const before = headline.height;
            const full = headline.width;
            headline.width = full * 0.8;
            look();
            verify(!headline.truncated);
            verify(headline.paintedWidth <= headline.width + 1);
            headline.width = 60;
            look();
            verify(headline.truncated);
            headline.width = Qt.binding(() => headline.parent.width);
            compare(headline.width, full);
            look();
            compare(headline.height, before);
        }

        function test_longTextsAreCutInsideTheirBlocks() {
            show("long");
            const top = part(panel, "top");
            for (const name of ["eyebrow", "headline", "detail"]) {
                const text = part(panel, name);
                verify(rightOf(text) + text.parent.x <= 306 - 14 + 0.5);
                verify(text.paintedWidth <= text.width + 1, name);
            }
            const detail = part(panel, "detail");
            verify(detail.truncated);
            verify(detail.paintedHeight + detail.y <= top.height - 14);
            compare(detail.textFormat, Text.PlainText);
            for (const row of rows()) {
                const state = part(row, "state");
                verify(state.mapToItem(row, state.width, 0).x <= 306 - 11 + 0.5);
            }
        }
    }
}
