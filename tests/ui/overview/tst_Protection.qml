pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview
import Vellomar.Prepared
import Vellomar.Testing

Item {
    id: root

    width: 480
    height: 420

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    PreparedModel { id: prepared }
    Summary { id: summed; model: prepared.model }

    Component { id: panel; ProtectionPanel { x: 40; y: 40; width: 384; summary: summed } }
    Component {
        id: loose
        ProtectionRow {
            x: 40
            y: 40
            width: 300
            ok: false
            title: "Titolo"
            detail: "Dettaglio"
            hasRemedy: true
        }
    }
    SignalSpy { id: clicks; signalName: "clicked" }

    Case {
        name: "Protection"

        readonly property list<string> ids: ["key", "copies", "versions", "access", "integrity"]

        function prepare() {
            prepared.state = "fresh";
            prepared.model.section = AppModel.Section.Overview;
            prepared.model.kit.showing = false;
            prepared.takeAsked();
        }

        function made(state) {
            prepared.state = state;
            return drawn(panel);
        }

        function row(properties) {
            const item = drawn(loose, properties);
            clicks.target = item;
            clicks.clear();
            return item;
        }

        // The texts of a row, with a "!" in front if it isn't ok and a ">" behind if it can be
        // clicked.
        function said(row) {
            const ok = part(row, "symbol").name === "checkmark.circle.fill";
            return (ok ? "" : "!") + part(row, "title").text + "|" + part(row, "detail").text
                + (part(row, "chevron").visible ? ">" : "");
        }

        function test_theRowsOfAState_data() {
            const key = "Chiave al sicuro|Kit di recupero salvato";
            const copies = "Copie in 3 luoghi|Disco, Drive, Server";
            const versions = "Versioni precedenti|Conservate per 2 anni";
            const access = "Accesso completo al disco|Salvati anche Mail, Safari e Messaggi";
            const integrity = "Backup integro|Verificato 2 giorni fa";
            return [
                {tag: "fresh", badge: "2 da sistemare", rows: [
                    "!Kit di recupero da salvare|Senza la chiave i backup sono persi>",
                    "!Nessuna destinazione|I file stanno solo su questo Mac>", versions, access]},
                {tag: "kit", badge: "1 da sistemare", rows: [
                    "!Kit di recupero da salvare|Senza la chiave i backup sono persi>",
                    "Copie in 2 luoghi|Disco, Drive", versions, access]},
                {tag: "well", badge: "Tutto a posto",
                    rows: [key, copies, versions, access, integrity]},
                {tag: "single", badge: "2 da sistemare", rows: [key,
                    "!Backup sul disco del Mac|Un guasto li porta via insieme ai file>",
                    "!Solo l'ultimo backup|Un file rovinato non si recupera più>", access,
                    integrity]},
                {tag: "access", badge: "1 da sistemare", rows: [key, copies, versions,
                    "!Accesso al disco limitato|Mail, Safari e Messaggi restano fuori>",
                    integrity]},
                {tag: "failed", badge: "1 da sistemare", rows: [key, copies, versions, access,
                    "!Verifica non riuscita|Disco esterno: pack 3f2a1b0c: ciphertext "
                    + "verification failed>"]}];
        }
        function test_theRowsOfAState(data) {
            const item = made(data.tag);
            const rows = ids.map(id => findChild(item, id)).filter(row => row?.visible);
            compare(rows.map(row => said(row)), data.rows);
            compare(part(item, "badgeText").text, data.badge);
            compare(ScreenReader.faults(root.Window.window), []);
            for (let i = 1; i < rows.length; ++i) {
                compare(rows[i].y - rows[i - 1].y - rows[i - 1].height, 2);
            }
        }

        function test_aSecondCopyDoesntMakeUpForTheMachinesOwnDisk() {
            const item = made("single");
            const config = prepared.model.config;
            config.driveEnabled = true;
            prepared.model.config = config;
            compare(said(part(item, "copies")),
                    "!Backup sul disco del Mac|Un guasto li porta via insieme ai file>");
        }

        function test_oneCopyAloneIsReportedByWhereItIs() {
            const item = made("well");
            const config = prepared.model.config;
            config.localEnabled = false;
            config.driveEnabled = false;
            prepared.model.config = config;
            compare(said(part(item, "copies")),
                    "!Una sola copia|Aggiungi un disco per ripristini rapidi>");
            config.localEnabled = true;
            config.serverEnabled = false;
            prepared.model.config = config;
            compare(said(part(item, "copies")),
                    "!Una sola copia|Un furto porta via Mac e disco insieme>");
        }

        function test_withoutAVerificationThereIsNoRowOfIt() {
            const item = made("waiting");
            compare(findChild(item, "integrity"), null);
            const height = item.height;
            prepared.state = "well";
            verify(part(item, "integrity").visible);
            tryCompare(item, "height", height + 2 + part(item, "integrity").height);
        }

        function test_thePanelsPartsStandWhereTheDesignSays() {
            const item = made("well");
            const head = part(item, "head").mapToItem(item, 0, 0);
            compare(head.x, 18);
            compare(head.y, 16);
            compare(part(item, "head").width, 384 - 36);
            const badge = part(item, "badge");
            fuzzyCompare(badge.mapToItem(item, badge.width, 0).x, 384 - 18, 1e-6);
            fuzzyCompare(badge.width - part(item, "badgeText").width, 18, 1);
            fuzzyCompare(badge.height - part(item, "badgeText").height, 8, 1);
            compare(badge.radius, badge.height / 2);
            const first = part(item, "key");
            const top = first.mapToItem(item, 0, 0);
            compare(top.x, 10);
            compare(first.width, 364);
            compare(top.y - 16 - part(item, "head").height, 12);
            const last = part(item, "integrity");
            compare(item.height - last.mapToItem(item, 0, last.height).y, 16);
        }

        function test_aRowsPartsStandWhereTheDesignSays() {
            const item = row();
            const place = name => part(item, name).mapToItem(item, 0, 0);
            const symbol = part(item, "symbol");
            compare(symbol.points, 15);
            compare(place("symbol").x, 8);
            compare(place("title").x, 8 + symbol.width + 11);
            compare(place("detail").x, place("title").x);
            compare(place("detail").y, place("title").y + part(item, "title").height);
            const chevron = part(item, "chevron");
            compare(chevron.points, 10);
            compare(chevron.weight, Font.DemiBold);
            compare(place("chevron").x + chevron.width, 300 - 8);
            compare(place("title").x + part(item, "title").width, place("chevron").x - 11);
            compare(place("title").y, 7);
            compare(item.height - place("detail").y - part(item, "detail").height, 7);
            compare(part(item, "title").font.weight, Font.Medium);
            compare(part(item, "title").font.pixelSize, 13);
            compare(part(item, "detail").font.pixelSize, 12);
            compare(String(part(item, "detail").color), String(Theme.secondary));
        }

        function test_withoutAChevronTheTextsHaveItsRoom() {
            const item = row({hasRemedy: false});
            const title = part(item, "title");
            verify(!part(item, "chevron").visible);
            compare(title.mapToItem(item, title.width, 0).x, 300 - 8);
        }

        function test_theSymbolIsMintOrAmber() {
            const panel = made("access");
            // Inside the round, beside its symbol.
            const left = id => part(part(panel, id), "symbol").mapToItem(root, 2.6, 8.5);
            const well = left("key");
            looks(root, well.x, well.y, Colours.mint, "in order");
            const wrong = left("access");
            looks(root, wrong.x, wrong.y, Colours.amber, "not in order");
        }

        function test_theBadgesGroundIsAHintOfItsColour_data() {
            return [{tag: "well", colour: Colours.mint, theme: Theme.mint},
                {tag: "fresh", colour: Colours.amber, theme: Theme.amber}];
        }
        function test_theBadgesGroundIsAHintOfItsColour(data) {
            const item = made(data.tag);
            const place = part(item, "badge").mapToItem(root, 5, part(item, "badge").height / 2);
            const panel = 0.105 - 0.05 * (place.y - 40) / item.height;
            const ground = Colours.over(0.2, 1, panel);
            looks(root, place.x, place.y, Colours.over(ground, data.colour, 0.14), "badge");
            const text = part(item, "badgeText");
            compare(String(text.color), String(data.theme));
            compare(text.font.pixelSize, 11);
            compare(text.font.weight, Font.DemiBold);
        }

        function test_theGroundOfARowComesUpUnderThePointer() {
            const item = row();
            const middle = 40 + item.height / 2;
            looks(root, 43, middle, 0.2, "clear");
            mouseMove(item, 150, 20);
            tryCompare(item, "glow", 1);
            Eye.look(root);
            looks(root, 43, middle, Colours.over(0.2, 1, 0.07), "hovered");
            compare(part(item, "chevron").color, Theme.amber);
            mouseMove(root, 1, 1);
            tryCompare(item, "glow", 0);
            compare(part(item, "chevron").color, Theme.white(0.3));
        }

        function test_hoveringEasesInAndOut() {
            const item = row();
            Motion.still = false;
            item.hovering = true;
            verify(item.glow < 1);
            tryCompare(item, "glow", 1);
            tryCompare(part(item, "chevron"), "color", Theme.amber);
        }

        function test_aRowWithNothingToDoIsNoButton() {
            const item = row({hasRemedy: false});
            mouseMove(item, 150, 20);
            compare(item.glow, 0);
            mouseClick(item);
            compare(clicks.count, 0);
            const button = part(item, "button");
            ScreenReader.perform(button, "Press");
            compare(clicks.count, 0);
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(!button.activeFocus);
            verify(!item.ringed);
            compare(ScreenReader.role(item), Accessible.StaticText);
            compare(ScreenReader.name(item), "Titolo: Dettaglio");
            compare(ScreenReader.tree(item).length, 1);
        }

        function test_aRowIsClickedByMouseKeysAndScreenReader() {
            const item = row();
            const button = part(item, "button");
            mouseClick(item);
            compare(clicks.count, 1);
            verify(!item.ringed);
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(item.ringed);
            for (const key of [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter]) {
                clicks.clear();
                keyClick(key);
                compare(clicks.count, 1);
            }
            clicks.clear();
            compare(ScreenReader.role(button), Accessible.Button);
            compare(ScreenReader.name(button), "Titolo: Dettaglio");
            ScreenReader.perform(button, "Press");
            compare(clicks.count, 1);
        }

        function test_aClickOpensTheRemedy_data() {
            return [
                {tag: "key", state: "fresh", kit: true},
                {tag: "copies", state: "fresh", section: AppModel.Section.Destinations},
                {tag: "versions", state: "single", section: AppModel.Section.Settings},
                {tag: "access", state: "access", asked: ["settings"]},
                {tag: "integrity", state: "failed", section: AppModel.Section.Activity}];
        }
        function test_aClickOpensTheRemedy(data) {
            mouseClick(part(made(data.state), data.tag));
            compare(prepared.model.section, data.section ?? AppModel.Section.Overview);
            compare(prepared.model.kit.showing, data.kit ?? false);
            compare(prepared.takeAsked(), data.asked ?? []);
        }

        function test_theRowsKeepTheirItemsDuringARun() {
            const item = made("failed");
            const row = part(item, "integrity");
            const button = part(row, "button");
            button.forceActiveFocus(Qt.TabFocusReason);
            mouseMove(row, 100, 20);
            tryCompare(row, "hovering", true);
            prepared.state = "long"; // a run in progress
            for (const percent of [0.5, 0.6, 0.7]) {
                prepared.setPercent(percent);
            }
            wait(0);
            compare(findChild(item, "integrity"), row);
            verify(button.activeFocus);
            verify(row.hovering);
        }

        function test_theFocusStaysWhenARowAppears() {
            const item = made("fresh");
            const button = part(part(item, "copies"), "button");
            button.forceActiveFocus(Qt.TabFocusReason);
            prepared.state = "single";
            verify(part(item, "integrity").visible);
            verify(button.activeFocus);
            compare(part(part(item, "copies"), "button"), button);
        }

        function test_theFocusStaysWhenARowDisappears() {
            const item = made("single");
            const copies = part(item, "copies");
            const button = part(copies, "button");
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(findChild(item, "integrity"));
            prepared.state = "fresh";
            tryVerify(() => !findChild(item, "integrity"));
            compare(part(copies, "title").text, "Nessuna destinazione");
            compare(part(item, "copies"), copies);
            verify(button.activeFocus);
        }

        function test_textsShrinkAsFarAsAllowedAndAreCutThen() {
            const cut = row({title: "Un titolo che per questa riga è troppo lungo davvero tanto",
                detail: "Un dettaglio che per questa riga è di gran lunga troppo lungo, e di più"});
            const title = part(cut, "title");
            verify(title.truncated);
            compare(title.minimumPixelSize, 11);
            compare(title.fontInfo.pixelSize, 11);
            const detail = part(cut, "detail");
            verify(detail.truncated);
            compare(detail.minimumPixelSize, 10);
            compare(detail.fontInfo.pixelSize, 10);
            const whole = row();
            compare(part(whole, "title").fontInfo.pixelSize, 13);
            compare(part(whole, "detail").fontInfo.pixelSize, 12);
            compare(cut.height, whole.height);
        }

        function test_aBreakInATextIsABlank() {
            const item = row({title: "uno\ndue", detail: "tre\r\nquattro\u2028cinque"});
            compare(part(item, "title").text, "uno due");
            compare(part(item, "detail").text, "tre quattro cinque");
            compare(part(item, "detail").lineCount, 1);
        }

        function test_markupIsShownAsItStands() {
            const item = row({title: "<b>Titolo</b>", detail: "&amp;<img src=x>"});
            compare(part(item, "title").textFormat, Text.PlainText);
            compare(part(item, "title").text, "<b>Titolo</b>");
            compare(part(item, "detail").textFormat, Text.PlainText);
        }

        function test_thePanelIsAGroupWithAHeading() {
            const item = made("well");
            compare(ScreenReader.role(item), Accessible.Grouping);
            compare(ScreenReader.name(item), "Protezione");
            verify(ScreenReader.tree(item).some(line => line.endsWith(": Tutto a posto")));
        }
    }
}
