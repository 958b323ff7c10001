pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview
import Vellomar.Prepared
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
    Summary { id: summed; model: prepared.model }

    Component {
        id: page
        OverviewPage {
            width: 980
            height: 660
            model: prepared.model
            summary: summed
        }
    }

    Case {
        name: "Page"

        readonly property list<string> column: ["dial", "title", "detail", "currentFile", "action",
            "notice"]

        function prepare() {
            prepared.state = "fresh";
            prepared.model.section = AppModel.Section.Overview;
            prepared.takeAsked();
        }

        function made(state, properties) {
            prepared.state = state;
            return drawn(page, properties);
        }

        function test_theTextsOfAState_data() {
            const soon = "Prossimo backup automatico entro un'ora.";
            return [
                {tag: "fresh", title: "Nessuna destinazione configurata",
                    detail: "Collega un disco esterno, Google Drive o un server privato.",
                    action: "Scegli una destinazione"},
                {tag: "kit", title: "Nessun backup eseguito",
                    detail: "I backup automatici partono dopo aver salvato il kit di recupero.",
                    action: "Esegui backup ora"},
                {tag: "waiting", title: "Nessun backup eseguito", detail: soon,
                    action: "Esegui backup ora"},
                {tag: "launching", title: "Backup aggiornato", detail: soon,
                    action: "Avvio in corso...", disabled: true},
                {tag: "scanning", title: "Backup su Google Drive", detail: "Analisi dei file",
                    action: "Interrompi", outline: true},
                {tag: "running", title: "Backup su Google Drive",
                    detail: "48.213 di 113.708 file · 31 GB di 73 GB · circa 6 min",
                    file: "~/Foto/2026/Estate/IMG_4211.heic", action: "Interrompi",
                    outline: true},
                {tag: "well", title: "Backup aggiornato", detail: soon,
                    action: "Esegui backup ora"},
                {tag: "stale", title: "Nessun backup da 3 giorni", detail: soon,
                    action: "Esegui backup ora"},
                {tag: "keyError", title: "Nessuna destinazione configurata",
                    detail: "Collega un disco esterno, Google Drive o un server privato.",
                    action: "Scegli una destinazione",
                    notice: "Il portachiavi è bloccato (errore 3)."},
                {tag: "starting", title: "In attesa del Portachiavi",
                    detail: "Se il sistema chiede di sbloccarlo, inserisci la password.",
                    action: "Avvio in corso...", disabled: true},
                {tag: "support", title: "Backup aggiornato", detail: soon,
                    action: "Esegui backup ora",
                    notice: "Vellomar non può scrivere nella sua cartella ~/.local/share/Vellomar "
                        + "(permesso negato): i backup non possono partire."}];
        }
        function test_theTextsOfAState(data) {
            const item = made(data.tag);
            compare(part(item, "title").words, data.title);
            compare(part(item, "detail").words, data.detail);
            compare(part(item, "currentFile").text, data.file ?? " ");
            const action = part(item, "action");
            compare(action.text, data.action);
            compare(action.enabled, !data.disabled);
            compare(action.kind, data.outline ? PillButton.Kind.Outline
                                              : PillButton.Kind.Primary);
            compare(part(item, "notice").visible, data.notice !== undefined);
            if (data.notice !== undefined) {
                compare(part(item, "noticeText").words, data.notice);
            }
            compare(ScreenReader.faults(root.Window.window), []);
        }

        function test_theOtherTextsOfTheSchedule() {
            const item = made("well");
            const config = prepared.model.config;
            config.intervalHours = 6;
            prepared.model.config = config;
            compare(part(item, "detail").words, "Prossimo backup automatico entro 6 ore.");
            config.autoBackup = false;
            prepared.model.config = config;
            compare(part(item, "detail").words, "Backup automatico disattivato.");
        }

        // The page alone and beside the sidebar of 222, in the smallest window and a large one.
        function test_everyMeasureInSeveralWindows_data() {
            return [
                {tag: "980x660", width: 980, height: 660, row: 900},
                {tag: "758x660", width: 758, height: 660, row: 686},
                {tag: "1600x1000", width: 1600, height: 1000, row: 900},
                {tag: "1378x1000", width: 1378, height: 1000, row: 900}];
        }
        function test_everyMeasureInSeveralWindows(data) {
            const item = made("keyError", {width: data.width, height: data.height});
            const columns = part(item, "columns");
            compare(columns.width, data.row);
            compare(columns.x, Math.round((data.width - data.row) / 2));
            fuzzyCompare(columns.y + columns.height / 2, data.height / 2, 0.5);
            compare(item.contentHeight, data.height);
            compare(item.contentWidth, data.width);
            verify(!item.interactive);

            const details = part(item, "details");
            compare(details.width, 384);
            compare(details.x + details.width, data.row);
            const verdict = part(item, "verdict");
            compare(verdict.x, 0);
            compare(verdict.width, data.row - 384 - 36);
            for (const side of [details, verdict]) {
                fuzzyCompare(side.y + side.height / 2, columns.height / 2, 0.51);
            }

            const dial = part(item, "dial");
            compare(dial.width, 236);
            compare(dial.height, 236);
            compare(dial.y, 0);
            const gaps = [28, 7, 4, 14, 12];
            for (let i = 0; i < gaps.length; ++i) {
                const above = part(item, column[i]);
                fuzzyCompare(part(item, column[i + 1]).y - above.y - above.height, gaps[i], 1e-6,
                             column[i + 1]);
            }
            for (const name of column) {
                const one = part(item, name);
                fuzzyCompare(one.x + one.width / 2, verdict.width / 2, 0.51, name);
            }
            compare(part(item, "action").width, 270);
            const last = part(item, "notice");
            compare(verdict.height, last.y + last.height);
        }

        function test_theColumnOfTheDetails() {
            const item = made("well");
            const panel = part(item, "panel");
            const heading = part(item, "destinations");
            compare(panel.y, 0);
            compare(panel.width, 384);
            compare(heading.x, 0);
            compare(heading.leftPadding, 6);
            compare(heading.topPadding, 8);
            compare(heading.text, "Destinazioni");
            compare(heading.y, panel.height + 12);
            let end = heading.y + heading.height;
            for (const name of ["tile0", "tile1", "tile2"]) {
                const tile = part(item, name);
                fuzzyCompare(tile.y - end, 12, 1e-6);
                compare(tile.width, 384);
                end = tile.y + tile.height;
            }
            compare(["tile0", "tile1", "tile2"].map(name => part(item, name).text),
                    ["Disco esterno", "Google Drive", "Server privato"]);
        }

        function test_theFontsAndColoursOfTheState() {
            const item = made("keyError");
            const isFont = (name, size, weight, colour) => {
                const text = part(item, name);
                compare(text.font.pixelSize, size, name);
                compare(text.font.weight, weight, name);
                compare(String(text.color), String(colour), name);
            };
            isFont("title", 25, Font.Bold, Theme.text);
            isFont("detail", 13, Font.Normal, Theme.secondary);
            isFont("currentFile", 10, Font.Normal, Theme.tertiary);
            isFont("noticeText", 12, Font.Normal, Theme.coral);
            compare(part(item, "noticeSymbol").name, "exclamationmark.triangle");
            compare(String(part(item, "noticeSymbol").color), String(Theme.coral));
            for (const name of ["title", "detail", "currentFile"]) {
                compare(part(item, name).horizontalAlignment, Text.AlignHCenter);
            }
            compare(part(item, "currentFile").elide, Text.ElideMiddle);
            verify(part(item, "action").large);
        }

        function test_theColumnDoesntJumpWhenARunBeginsAndEnds() {
            const item = made("well");
            const places = () => ["dial", "title", "detail", "currentFile", "action"].map(
                name => part(item, name).mapToItem(item, 0, 0).y);
            const before = places();
            for (const state of ["launching", "scanning", "running", "well"]) {
                prepared.state = state;
                Eye.look(root);
                compare(places(), before, state);
            }
        }

        function test_theButtonLeadsToTheDestinations() {
            mouseClick(part(made("fresh"), "action"));
            compare(prepared.model.section, AppModel.Section.Destinations);
            compare(prepared.takeAsked(), []);
        }

        function test_theButtonStartsABackup_data() {
            return ways();
        }
        function test_theButtonStartsABackup(data) {
            const button = part(made("well"), "action");
            press(button, data.way);
            verify(prepared.takeAsked().includes("start"));
            compare(button.text, "Avvio in corso...");
            verify(!button.enabled);
            fuzzyCompare(button.opacity, 0.38, 1e-6);
        }

        function test_whileABackupStartsTheButtonDoesNothing() {
            const button = part(made("launching"), "action");
            mouseClick(button);
            button.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(prepared.takeAsked(), []);
        }

        function test_theButtonKeepsTheFocusWhenTheRunBegins() {
            const button = part(made("well"), "action");
            button.forceActiveFocus(Qt.TabFocusReason);
            prepared.state = "launching";
            prepared.state = "running";
            compare(button.text, "Interrompi");
            verify(button.activeFocus);
        }

        function test_theTabKeyVisitsWhatCanBePressed_data() {
            return [
                {tag: "fresh", order: ["action", "key", "copies", "tile0", "tile1", "tile2"]},
                {tag: "failed", order: ["action", "integrity", "tile0", "tile1", "tile2"]},
                {tag: "launching", order: ["tile0", "tile1", "tile2"]},
                {tag: "running", order: ["action", "tile0", "tile1", "tile2"]}];
        }
        function test_theTabKeyVisitsWhatCanBePressed(data) {
            const item = made(data.tag);
            const order = [];
            for (let i = 0; i < data.order.length; ++i) {
                keyClick(Qt.Key_Tab);
                const on = focused();
                order.push(on.objectName === "button" ? on.parent.objectName : on.objectName);
                verify(on.visualFocus);
            }
            compare(order, data.order);
            keyClick(Qt.Key_Backtab);
            compare(focused(), part(item, "tile1"));
        }

        function test_whatIsHigherThanThePageScrolls() {
            const item = made("well", {height: 400});
            const columns = part(item, "columns");
            compare(item.contentHeight, columns.height + 60);
            compare(columns.y, 30);
            verify(item.interactive);
            compare(item.boundsBehavior, Flickable.DragAndOvershootBounds);
            mouseWheel(item, 100, 100, 0, -600);
            tryVerify(() => item.contentY > 0);
        }

        function test_whatFitsNeitherScrollsNorBounces() {
            const item = made("well");
            compare(item.boundsBehavior, Flickable.StopAtBounds);
            mouseWheel(item, 100, 100, 0, -600);
            wait(0);
            compare(item.contentY, 0);
        }

        function test_theFocusedItemScrollsIntoView() {
            const item = made("well", {height: 400});
            const last = part(item, "tile2");
            last.forceActiveFocus(Qt.TabFocusReason);
            verify(item.contentY > 0);
            verify(last.mapToItem(item, 0, last.height).y <= 400);
            prepared.state = "fresh";
            part(part(item, "key"), "button").forceActiveFocus(Qt.TabFocusReason);
            verify(part(item, "key").mapToItem(item, 0, 0).y >= 0);
        }

        function test_longTextsNeitherOverlapNorWidenThePage_data() {
            return [{tag: "980x660", width: 980, height: 660},
                {tag: "758x660", width: 758, height: 660}];
        }
        function test_longTextsNeitherOverlapNorWidenThePage(data) {
            const item = made("long", {width: data.width, height: data.height});
            compare(item.contentWidth, data.width);
            const columns = part(item, "columns");
            compare(columns.width, Math.min(900, data.width - 72));
            verify(columns.height + 60 <= item.contentHeight);
            const verdict = part(item, "verdict");
            let end = 0;
            for (const name of column) {
                const one = part(item, name);
                verify(one.visible);
                verify(one.y >= end, name);
                if (name !== "action") {
                    verify(one.x >= 0 && one.x + one.width <= verdict.width + 1e-6, name);
                }
                end = one.y + one.height;
            }
            verify(part(item, "currentFile").truncated);
            verify(part(item, "currentFile").contentWidth <= verdict.width);
            for (const text of textItems(item)) {
                compare(text.textFormat, Text.PlainText, text.text);
                const left = text.mapToItem(item, 0, 0).x;
                verify(left >= 0 && left + text.width <= data.width, text.text);
                verify(text.contentWidth <= text.width + 0.5 || text.width === 0
                       || text.text.length === 1, text.text);
            }
            compare(part(item, "noticeText").words, prepared.model.key.error);
        }

        function test_aNoticeStandsInTheMiddleAlsoWhenItWraps_data() {
            return [{tag: "one line", text: "Il portachiavi è bloccato."},
                {tag: "several", text: "Il portachiavi di questo computer non ha risposto in "
                    + "tempo e la chiave non si legge, riprova tra poco."}];
        }
        function test_aNoticeStandsInTheMiddleAlsoWhenItWraps(data) {
            const item = made("well");
            prepared.setKeyError(data.text);
            const words = part(item, "noticeText");
            compare(words.lineCount > 1, data.tag === "several");
            const middle = part(item, "verdict").mapToItem(root, part(item, "verdict").width / 2,
                                                           0).x;
            Eye.look(root);
            const scale = root.Screen.devicePixelRatio;
            const place = part(item, "notice").mapToItem(root, 0, 0);
            let left = 1e9;
            let right = -1;
            for (let y = place.y * scale; y < (place.y + words.height) * scale; ++y) {
                for (let x = 0; x < 2 * middle * scale; ++x) {
                    if (Eye.pixel(x, Math.floor(y)).r > 0.5) {
                        left = Math.min(left, x);
                        right = Math.max(right, x + 1);
                    }
                }
            }
            fuzzyCompare((left + right) / 2 / scale, middle, 1.5);
            // The symbol is close to the words.
            const sign = part(item, "noticeSymbol");
            const begin = words.mapToItem(root, (words.width - words.contentWidth) / 2, 0).x;
            fuzzyCompare(begin - sign.mapToItem(root, sign.width, 0).x, 6, 0.01);
        }

        function test_wordsAndSignsStandOutFromTheirGround() {
            const item = made("running");
            for (const name of ["detail", "currentFile"]) {
                const text = part(item, name);
                const found = Colours.contrast(text.color, Eye.at(text, 1, 3));
                verify(found >= 4.5, "%1: %2".arg(name).arg(found));
            }
            const tile = part(made("fresh"), "tile0");
            const chevron = part(tile, "chevron");
            const found = Colours.contrast(chevron.color, Eye.at(tile, tile.width - 40, 28));
            verify(found >= 3, "chevron: " + found);
        }

        // In a window below the smallest size, as on a small screen with a large scale.
        function test_onASmallScreenTheColumnsAreStacked_data() {
            return [{tag: "578x460", width: 578, height: 460}, {tag: "418x380", width: 418, height: 380},
                {tag: "290x300", width: 290, height: 300}];
        }
        function test_onASmallScreenTheColumnsAreStacked(data) {
            const item = made("well", {width: data.width, height: data.height});
            const columns = part(item, "columns");
            const verdict = part(item, "verdict");
            const details = part(item, "details");
            compare(item.contentWidth, data.width);
            compare(columns.width, data.width - 72);
            compare(verdict.width, columns.width);
            compare(verdict.y, 0);
            compare(details.y, verdict.height + 36);
            compare(details.width, Math.min(384, columns.width));
            fuzzyCompare(details.x + details.width / 2, columns.width / 2, 0.51);
            compare(columns.height, details.y + details.height);
            verify(item.interactive);
            for (const name of ["action", "tile2"]) {
                part(item, name).forceActiveFocus(Qt.TabFocusReason);
                const place = part(item, name).mapToItem(item, 0, 0);
                verify(place.y >= 0 && place.y + part(item, name).height <= data.height, name);
                verify(place.x >= 0 && place.x + part(item, name).width <= data.width, name);
            }
        }

        function test_itScrollsByKeys() {
            const item = made("well", {height: 400});
            item.forceActiveFocus();
            keyClick(Qt.Key_Down);
            compare(item.contentY, 40);
            keyClick(Qt.Key_End);
            compare(item.contentY, item.contentHeight - 400);
            part(item, "action").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Home);
            compare(item.contentY, 0);
            prepared.takeAsked();
            keyClick(Qt.Key_PageDown);
            verify(item.contentY > 0);
            compare(prepared.takeAsked(), []);
        }

        function test_aNoticeComesAndGoes() {
            const item = made("well");
            const height = part(item, "verdict").height;
            prepared.setKeyError("Il portachiavi non risponde.");
            const notice = part(item, "notice");
            verify(notice.visible);
            compare(ScreenReader.role(notice), Accessible.AlertMessage);
            compare(ScreenReader.name(notice), "Il portachiavi non risponde.");
            compare(part(item, "verdict").height, height + 12 + notice.height);
            prepared.state = "fresh";
            verify(!notice.visible);
            compare(part(item, "verdict").height, height);
        }

        function test_theScreenReaderMeetsAllInOrder() {
            const item = made("running");
            compare(ScreenReader.name(item), "Panoramica");
            const names = ScreenReader.tree(item).map(line => line.slice(line.indexOf(": ") + 2));
            compare(names, [
                "Panoramica", "42% Copia dei file", "Backup su Google Drive",
                "48.213 di 113.708 file · 31 GB di 73 GB · circa 6 min",
                "~/Foto/2026/Estate/IMG_4211.heic", "Interrompi", "Protezione", "Protezione",
                "Tutto a posto", "Chiave al sicuro: Kit di recupero salvato",
                "Copie in 3 luoghi: Disco, Drive, Server",
                "Versioni precedenti: Conservate per 2 anni",
                "Accesso completo al disco: Salvati anche Mail, Safari e Messaggi",
                "Backup integro: Verificato 2 giorni fa", "Destinazioni",
                "Disco esterno: Backup 24 minuti fa", "Google Drive: Backup 18 minuti fa",
                "Server privato: Backup 12 minuti fa"]);
        }
    }
}
