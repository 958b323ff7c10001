import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Testing
import Vellomar.Window

Item {
    id: root

    width: 1600
    height: 1000

    PreparedModel { id: prepared }
    Summary { id: summary; model: prepared.model }

    RootView {
        id: view

        model: prepared.model
        summary: summary
    }

    Case {
        name: "Sidebar"
        aside: Qt.point(1500, 900)

        readonly property var titles: ["Panoramica", "Ripristina", "Cartelle", "Destinazioni",
            "Attività", "Impostazioni"]
        readonly property var symbols: ["gauge.with.needle", "clock.arrow.circlepath", "folder",
            "externaldrive", "list.bullet.rectangle", "gearshape"]
        readonly property Item sidebar: findChild(view, "way").parent

        function prepare() {
            prepared.state = "fresh";
            prepared.model.section = AppModel.Section.Overview;
            view.width = 980;
            view.height = 660;
            root.forceActiveFocus();
            settle();
        }

        function settle() {
            Eye.look(root);
        }

        function items() {
            return Array.from(part(sidebar, "items").children).filter(i => i.title);
        }

        function sizes() {
            return [{tag: "smallest", width: 980, height: 660},
                {tag: "large", width: 1600, height: 1000}];
        }

        function resize(data) {
            view.width = data.width;
            view.height = data.height;
            settle();
        }

        function test_itIs222WideAndAsHighAsTheWindow_data() {
            return sizes();
        }
        function test_itIs222WideAndAsHighAsTheWindow(data) {
            resize(data);
            compare(sidebar.width, 222);
            compare(sidebar.height, data.height);
            compare(sidebar.x, 0);
        }

        function test_itsGroundFadesDownwards_data() {
            return sizes();
        }
        function test_itsGroundFadesDownwards(data) {
            resize(data);
            for (const y of [10, 300, 500, data.height - 5]) {
                looks(view, 5, y, Colours.part(Colours.sidebar, (y + 0.5) / data.height));
            }
        }

        function test_aDarkLineRunsAlongItsTrailingEdge() {
            const edge = part(sidebar, "edge");
            compare(edge.width, 1);
            compare(edge.x, 221);
            compare(edge.height, 660);
            const ground = Colours.part(Colours.sidebar, 0.5);
            looks(view, 221.7, 330, Colours.over(ground, 0, 0.28));
            looks(view, 220.2, 330, ground);
        }

        function test_itsShadowFallsOnThePageToTheRight() {
            const y = 30;
            const ground = Colours.part(Colours.ground, y / 660);
            looks(view, 320, y, ground);
            verify(Eye.at(view, 224, 330).g < Eye.at(view, 240, 330).g);
            verify(Eye.at(view, 240, 330).g < Eye.at(view, 262, 330).g);
            verify(sidebar.z > 0);
        }

        function test_theBrandStandsAtTheTop() {
            const brand = part(sidebar, "brand");
            compare(brand.x, 24);
            compare(brand.y, 60);
            compare(brand.height, 26);
            compare(brand.spacing, 10);
            compare(brand.children[0].width, 26);
            compare(brand.children[0].height, 26);
            const words = Array.from(brand.children[1].children);
            compare(words.map(w => w.text), ["Vell", "omar"]);
            for (const word of words) {
                compare(word.font.pixelSize, 17);
                compare(word.font.weight, Font.Bold);
            }
            compare(words.map(w => String(w.color)), [String(Theme.text), String(Theme.amber)]);
            compare(words[1].x, words[0].width);
        }

        function test_theSectionsFollowInTheirOrder() {
            compare(items().map(i => i.title), titles);
            compare(items().map(i => part(i, "title").text), titles);
            compare(items().map(i => part(i, "symbol").name), symbols);
            const list = part(sidebar, "items");
            compare(list.y, 60 + 26 + 34 + 6);
            compare(list.x, 12);
            compare(list.spacing, 6);
        }

        function test_aSectionHasRoomAroundSymbolAndTitle() {
            for (const item of items()) {
                const symbol = part(item, "symbol");
                const title = part(item, "title");
                compare(item.width, 198);
                compare(symbol.mapToItem(item, 0, 0).x, 12);
                compare(symbol.width, 22);
                compare(symbol.points, 15);
                compare(symbol.weight, Font.Normal);
                compare(title.mapToItem(item, 0, 0).x, 46);
                compare(title.font.pixelSize, 14);
                fuzzyCompare(item.height, Math.max(title.height, symbol.height) + 22, 0.01);
            }
        }

        function test_theOneOnShowStandsOut() {
            prepared.model.section = AppModel.Section.Sources;
            settle();
            items().forEach((item, i) => {
                const isOn = i === AppModel.Section.Sources;
                const symbol = part(item, "symbol");
                compare(item.selected, isOn);
                compare(part(item, "title").font.weight, isOn ? Font.DemiBold : Font.Normal);
                verify(Qt.colorEqual(symbol.color, isOn ? Theme.amber : Theme.white(0.85)));
                compare(part(item, "chosen").visible, isOn);
                // What is seen of the symbol: it has the colour somewhere, and none of the other.
                let amber = 0;
                for (let x = 0.25; x < symbol.width; x += 0.5) {
                    for (let y = 0.25; y < symbol.height; y += 0.5) {
                        const pixel = Eye.at(symbol, x, y);
                        amber = Math.max(amber, pixel.r - pixel.b);
                    }
                }
                verify(isOn ? amber > 0.5 : amber < 0.05, "%1: %2".arg(item.title).arg(amber));
            });
        }

        function test_itsGroundIsARaisedPanel() {
            const item = items()[0];
            const chosen = part(item, "chosen");
            compare(chosen.radius, 10);
            compare(chosen.rimWidth, 1);
            compare(chosen.shadowOffset, Qt.point(0, 4));
            verify(Qt.colorEqual(chosen.shadowColor, Theme.black(0.3)));
            for (const fraction of [0.3, 0.5, 0.8]) {
                const y = Math.floor(item.height * fraction);
                const ground = Colours.part(Colours.sidebar,
                                            (item.mapToItem(view, 0, y).y + 0.5) / 660);
                looks(item, 180, y, Colours.over(ground, 1, 0.105 - 0.05 * (y + 0.5) / item.height
                                                  + 0.03));
            }
            verify(Eye.at(item, 100, item.height + 3).g < Eye.at(item, 100, item.height + 20).g);
        }

        function test_hoveringLightsUpTheOthersOnly() {
            const item = items()[2];
            const ground = Colours.part(Colours.sidebar, item.mapToItem(view, 0, 20.5).y / 660);
            looks(item, 180, 20, ground);
            mouseMove(item, 100, 10);
            verify(item.hovering);
            settle();
            looks(item, 180, 20, Colours.over(ground, 1, 0.05));
            mouseMove(items()[0], 100, 10);
            settle();
            looks(item, 180, 20, ground);
            verify(!part(items()[0], "hover").visible);
        }

        function test_hoveringIsSoftened() {
            Motion.still = false;
            const item = items()[3];
            const hover = part(item, "hover");
            const first = [];
            const note = () => first.push(hover.opacity);
            item.hoveringChanged.connect(note);
            mouseMove(item, 100, 10);
            item.hoveringChanged.disconnect(note);
            compare(first, [0]);
            tryCompare(hover, "opacity", 1);
        }

        function test_aClickAnywhereOnTheRowGoesThere() {
            for (const [index, x, y] of [[3, 2, 2], [1, 190, 30], [5, 60, 20], [0, 195, 3]]) {
                mouseClick(items()[index], x, y);
                compare(prepared.model.section, index);
                compare(items().map(i => i.selected), titles.map((title, i) => i === index));
            }
        }

        function test_theGapBetweenTwoBelongsToNeither() {
            mouseClick(items()[2], 50, items()[2].height + 3);
            compare(prepared.model.section, AppModel.Section.Overview);
        }

        function test_aClickOnTheOneOnShowLeavesItOnShow() {
            mouseClick(items()[0]);
            compare(prepared.model.section, AppModel.Section.Overview);
            verify(items()[0].selected && items()[0].checked);
        }

        function test_theKeyboardReachesAndChoosesThem_data() {
            return [{key: Qt.Key_Space}, {key: Qt.Key_Return}, {key: Qt.Key_Enter}];
        }
        function test_theKeyboardReachesAndChoosesThem(data) {
            part(sidebar, "menuButton").forceActiveFocus(Qt.TabFocusReason);
            for (const item of items()) {
                keyClick(Qt.Key_Tab);
                verify(item.activeFocus);
                verify(item.ringed);
                keyClick(data.key);
                compare(titles[prepared.model.section], item.title);
            }
        }

        function test_theArrowsGoUpAndDownAndStopAtTheEnds() {
            items()[0].forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Up);
            verify(items()[0].activeFocus);
            for (let i = 1; i < 6; ++i) {
                keyClick(Qt.Key_Down);
                verify(items()[i].activeFocus);
                verify(items()[i].ringed);
            }
            keyClick(Qt.Key_Down);
            verify(items()[5].activeFocus);
            keyClick(Qt.Key_Up);
            verify(items()[4].activeFocus);
            compare(prepared.model.section, AppModel.Section.Overview);
        }

        function test_theFootReportsHowTheBackupsStand_data() {
            return [
                {tag: "fresh", text: "Da configurare", colour: Colours.coral},
                {tag: "kit", text: "Nessun backup", colour: Colours.coral},
                {tag: "waiting", text: "Nessun backup", colour: Colours.coral},
                {tag: "launching", text: "Backup in corso", colour: Colours.amber},
                {tag: "running", text: "Backup in corso", colour: Colours.amber},
                {tag: "well", text: "Backup aggiornato", colour: Colours.mint},
                {tag: "stale", text: "Fermo da 3 giorni", colour: Colours.coral},
                {tag: "staleRunning", text: "Backup in corso", colour: Colours.amber}
            ];
        }
        function test_theFootReportsHowTheBackupsStand(data) {
            prepared.state = data.tag;
            settle();
            const foot = part(sidebar, "state");
            compare(foot.text, data.text);
            compare(ScreenReader.name(foot), data.text);
            compare(foot.x, 24);
            compare(foot.y + foot.height, 660 - 18);
            looks(foot, 3.5, foot.height / 2, data.colour);
            if (data.tag.startsWith("stale")) {
                compare(prepared.model.run.staleText, "3 giorni");
            }
        }

        function test_theScreenReaderHearsWhichIsOnShow() {
            prepared.model.section = AppModel.Section.Activity;
            items().forEach((item, i) => {
                compare(ScreenReader.role(item), Accessible.PageTab);
                compare(ScreenReader.name(item), titles[i]);
                compare(ScreenReader.selected(item), i === AppModel.Section.Activity);
            });
            ScreenReader.perform(items()[2], "Press");
            compare(prepared.model.section, AppModel.Section.Sources);
            verify(ScreenReader.selected(items()[2]));
            verify(!ScreenReader.selected(items()[4]));
        }
    }
}
