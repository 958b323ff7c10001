import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Overview
import Vellomar.Prepared
import Vellomar.Sources
import Vellomar.Testing
import Vellomar.Window

Item {
    id: root

    width: 1600
    height: 1000

    Component {
        id: scene

        Item {
            property alias prepared: prepared
            property alias view: view

            width: 1600
            height: 1000

            PreparedModel { id: prepared; state: "fresh" }
            Summary { id: summary; model: prepared.model }

            RootView {
                id: view

                width: 980
                height: 660
                model: prepared.model
                summary: summary
            }
        }
    }

    Case {
        name: "Pages"
        readonly property var subtitles: [undefined,
            "Scegli una versione e recupera file o cartelle",
            "Cartelle incluse nel backup",
            "I backup sono indipendenti e cifrati. Se una destinazione non è raggiungibile, le "
            + "altre partono lo stesso.",
            "Esito e durata di ogni backup",
            "Preferenze di Vellomar"]
        readonly property var titles: ["Panoramica", "Ripristina", "Cartelle", "Destinazioni",
            "Attività", "Impostazioni"]
        property PreparedModel prepared
        property RootView view
        property PageArea area

        function open(state, section) {
            const made = createTemporaryObject(scene, root);
            prepared = made.prepared;
            prepared.state = state ?? "fresh";
            view = made.view;
            area = part(view, "pages");
            prepared.model.section = section ?? AppModel.Section.Overview;
            Eye.look(root);
        }

        function turns() {
            return Array.from(area.children).filter(c => (c as PageTurn)?.visible);
        }

        function resize(data) {
            view.width = data.width;
            view.height = data.height;
            Eye.look(root);
        }

        function sizes() {
            return [{tag: "smallest", width: 980, height: 660},
                {tag: "large", width: 1600, height: 1000}];
        }

        function test_theyTakeAllThatTheSidebarLeaves_data() {
            return sizes();
        }
        function test_theyTakeAllThatTheSidebarLeaves(data) {
            open();
            resize(data);
            compare(area.x, 222);
            compare(area.y, 0);
            compare(area.width, data.width - 222);
            compare(area.height, data.height);
            compare(area.page.page.width, area.width);
            compare(area.page.page.height, area.height);
            verify(area.clip);
        }

        function test_theirGroundFadesDownwards_data() {
            return sizes();
        }
        function test_theirGroundFadesDownwards(data) {
            open("fresh", AppModel.Section.Activity);
            resize(data);
            for (const y of [10, 40, data.height - 10]) {
                looks(view, 300, y, Colours.part(Colours.ground, (y + 0.5) / data.height));
            }
        }

        function test_eachSectionHasItsPage_data() {
            return [1, 2, 3, 4, 5].map(section => ({tag: titles[section], section: section}));
        }
        function test_eachSectionHasItsPage(data) {
            open("fresh", data.section);
            const page = area.page.page;
            compare(page.title, data.tag);
            compare(page.subtitle, subtitles[data.section]);
            const lines = ScreenReader.tree(page);
            compare(lines.slice(0, 3), ["Pane: " + data.tag, "Heading: " + data.tag,
                                       "StaticText: " + subtitles[data.section]]);
        }

        function test_onlySectionsWithoutAPageAreEmpty() {
            open();
            const empty = [0, 1, 2, 3, 4, 5].filter(section => {
                prepared.model.section = section;
                const lines = ScreenReader.tree(area.page.page);
                const nothing = "StaticText: Questa pagina non fa parte di questa versione di "
                              + "Vellomar.";
                compare(lines.includes(nothing), lines.includes("StaticText: Niente da mostrare"));
                return lines.includes(nothing);
            });
            compare(empty.map(section => titles[section]),
                    ["Ripristina", "Attività", "Impostazioni"]);
        }

        function test_thePagesKnowTheModel() {
            open("fresh", AppModel.Section.Sources);
            const page = area.page.page;
            verify((page as SourcesPage) !== null);
            compare(page.model, prepared.model);
        }

        function test_theOverviewKnowsTheModel() {
            open();
            const page = area.page.page;
            verify((page as OverviewPage) !== null);
            compare(page.model, prepared.model);
            compare(page.summary, view.summary);
        }

        function test_theEmblemRunsOffTheEdge_data() {
            return sizes();
        }
        function test_theEmblemRunsOffTheEdge(data) {
            open();
            resize(data);
            const symbols = ["gauge.with.needle", "clock.arrow.circlepath", "folder",
                "externaldrive", "list.bullet.rectangle", "gearshape"];
            symbols.forEach((name, section) => {
                prepared.model.section = section;
                const emblem = part(area, "emblem");
                compare(emblem.name, name);
                compare(emblem.points, 520);
                compare(emblem.weight, Font.Bold);
                verify(Qt.colorEqual(emblem.color, Theme.white(0.035)));
                compare(emblem.mapToItem(area, emblem.width, 0).x, area.width + 210);
                fuzzyCompare(emblem.mapToItem(area, 0, emblem.height / 2).y, area.height / 2 + 60,
                             0.51);
            });
        }

        function test_theEmblemCanHardlyBeSeen() {
            open("fresh", AppModel.Section.Settings);
            const y = 600;
            const ground = Colours.part(Colours.ground, (y + 0.5) / 660);
            const emblem = Colours.over(ground, 1, 0.035);
            const most = 2 / 255 + 1e-6;
            let covered = 0;
            for (let x = 300; x < 980; ++x) {
                const pixel = Eye.at(view, x, y);
                verify(pixel.g > ground[1] - most && pixel.g < emblem[1] + most);
                covered += Colours.near(pixel, emblem) && !Colours.near(pixel, ground);
            }
            verify(covered > 100 && covered < 600, covered);
        }

        function test_theEmblemIsNotCutAtItsOwnEdges() {
            open("fresh", AppModel.Section.Settings);
            const emblem = part(area, "emblem");
            const left = emblem.mapToItem(view, 0, 0).x;
            let covered = 0;
            for (let y = 300; y < 480; ++y) {
                const ground = Colours.part(Colours.ground, (y + 0.5) / 660);
                covered += Colours.near(Eye.at(view, left + 1, y), Colours.over(ground, 1, 0.035));
            }
            verify(covered < 50, covered); // the round tip of a tooth
        }

        function test_theEmblemIsBehindThePage() {
            open();
            const things = Array.from(area.children);
            verify(things.indexOf(part(area, "emblem").parent) < things.indexOf(area.page));
        }

        function test_aChangeOfSectionReplacesThePage() {
            open();
            prepared.model.section = AppModel.Section.Sources;
            const first = area.page.page;
            prepared.model.section = AppModel.Section.Activity;
            const second = area.page.page;
            verify(first !== second);
            tryVerify(() => turns().length === 1);
            prepared.model.section = AppModel.Section.Sources;
            verify(area.page.page !== first);
        }

        function test_aPagesOwnStateIsLost() {
            open("long");
            resize({width: 980, height: 300});
            let page = area.page.page;
            verify(page.contentHeight > page.height);
            page.contentY = 40;
            prepared.model.section = AppModel.Section.Activity;
            prepared.model.section = AppModel.Section.Overview;
            tryVerify(() => turns().length === 1);
            page = area.page.page;
            verify((page as OverviewPage) !== null);
            compare(page.contentY, 0);
        }

        function test_theSameSectionAgainKeepsThePage() {
            open();
            const page = area.page.page;
            prepared.model.section = AppModel.Section.Overview;
            compare(turns().length, 1);
            compare(area.page.page, page);
        }

        function test_whileAllIsStillThePageIsThereAtOnce() {
            open();
            prepared.model.section = AppModel.Section.Restore;
            const coming = area.page;
            compare(coming.y, 0);
            compare(coming.opacity, 1);
            tryVerify(() => turns().length === 1);
            compare(area.page, coming);
        }

        function test_theNewPageComesUpFromTheLowerEdge() {
            Motion.still = false;
            open();
            const old = area.page;
            prepared.model.section = AppModel.Section.Destinations;
            const coming = area.page;
            verify(old !== coming);
            const spring = part(coming, "coming");
            verify(spring.running);
            compare(coming.y, area.height);
            compare(coming.opacity, 0);
            spring.pause();
            coming.arrival = 0.25;
            compare(coming.y, 0.75 * area.height);
            compare(coming.opacity, 0.25);
            coming.arrival = 1.01; // a spring goes a little too far
            compare(coming.opacity, 1);
            spring.resume();
            tryCompare(spring, "running", false);
            compare(coming.y, 0);
            compare(coming.opacity, 1);
            tryVerify(() => turns().length === 1);
            compare(area.page, coming);
        }

        function test_theOldPageOnlyFades() {
            Motion.still = false;
            open();
            const old = area.page;
            prepared.model.section = AppModel.Section.Destinations;
            const spring = part(old, "going");
            verify(spring.running);
            verify(!old.enabled);
            compare(old.opacity, 1);
            spring.pause();
            old.presence = 0.25;
            compare(old.y, 0);
            compare(old.opacity, 0.25);
            spring.resume();
            tryVerify(() => turns().length === 1);
        }

        function test_bothMoveAsASpring() {
            for (const still of [false, true]) {
                Motion.still = still;
                open();
                for (const name of ["coming", "going"]) {
                    const spring = part(area.page, name);
                    compare(spring.response, 0.5);
                    compare(spring.damping, 0.88);
                    compare(spring.duration, still ? 0 : Motion.springTime(0.5, 0.88));
                }
            }
        }

        function test_quickChangesLeaveOnePage() {
            Motion.still = false;
            open();
            for (let i = 0; i < 40; ++i) {
                prepared.model.section = i % 6;
                wait(i % 5 === 0 ? 20 : 0);
            }
            prepared.model.section = AppModel.Section.Activity;
            tryVerify(() => turns().length === 1);
            compare(area.page.page.title, "Attività");
            tryCompare(area.page, "y", 0);
            compare(area.page.opacity, 1);
            verify(area.page.enabled);
        }

        function test_aPageThatGoesLosesTheKeyboard() {
            Motion.still = false;
            open();
            keyClick(Qt.Key_Tab);
            const button = part(area.page, "action");
            verify(button !== null);
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.activeFocus);
            prepared.model.section = AppModel.Section.Activity;
            verify(!button.activeFocus);
            tryVerify(() => turns().length === 1);
        }

        function test_theKeyboardGoesAlongToTheNewPage_data() {
            return [{tag: "button", state: "fresh", name: "action"},
                {tag: "row", state: "fresh", name: "copies"},
                {tag: "tile", state: "well", name: "tile1"}];
        }
        function test_theKeyboardGoesAlongToTheNewPage(data) {
            for (const still of [true, false]) {
                Motion.still = still;
                open(data.state);
                const found = part(area.page, data.name);
                const control = data.tag === "row" ? part(found, "button") : found;
                control.forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Return);
                compare(prepared.model.section, AppModel.Section.Destinations);
                compare(root.Window.activeFocusItem, area.page.page);
                tryVerify(() => turns().length === 1);
                compare(root.Window.activeFocusItem, area.page.page);
                // It goes on from there, and to where it was.
                prepared.model.section = AppModel.Section.Overview;
                compare(root.Window.activeFocusItem, area.page.page);
                keyClick(Qt.Key_Tab);
                compare(root.Window.activeFocusItem.objectName, "action");
            }
        }

        function test_aKeyboardThatIsElsewhereStaysThere() {
            open();
            view.forceActiveFocus();
            keyClick(Qt.Key_Tab);
            const elsewhere = root.Window.activeFocusItem;
            verify(elsewhere !== view);
            prepared.model.section = AppModel.Section.Activity;
            compare(root.Window.activeFocusItem, elsewhere);
        }

        function test_withoutAnyControlKeysScrollThePage() {
            open("long");
            resize({width: 980, height: 300});
            view.forceActiveFocus();
            const scrolling = area.page.page;
            keyClick(Qt.Key_PageDown);
            verify(scrolling.contentY > 0);
            keyClick(Qt.Key_Home);
            compare(scrolling.contentY, 0);
        }

        function test_theViewHasTheKeyboardFromTheStart() {
            open();
            verify(view.focus);
        }

        function test_onASmallScreenEverythingCanBeReached_data() {
            return [{tag: "800x500", width: 800, height: 500},
                {tag: "640x400", width: 640, height: 400},
                {tag: "512x300", width: 512, height: 300}];
        }
        function test_onASmallScreenEverythingCanBeReached(data) {
            open("well");
            resize(data);
            view.forceActiveFocus();
            const met = [];
            for (let i = 0; i < 20; ++i) {
                keyClick(Qt.Key_Tab);
                const item = root.Window.activeFocusItem;
                if (met.includes(item)) {
                    break;
                }
                met.push(item);
                const place = item.mapToItem(view, 0, 0);
                verify(place.x >= -0.5 && place.x + item.width <= data.width + 0.5,
                       "%1 at %2".arg(item).arg(place));
                verify(place.y >= -0.5 && place.y + item.height <= data.height + 0.5,
                       "%1 at %2".arg(item).arg(place));
            }
            verify(met.some(item => item.objectName === "action"));
            compare(met.length, 1 + 6 + 1 + 3); // menu, sections, main button, tiles
            const foot = part(view, "state");
            verify(foot.mapToItem(view, 0, foot.height).y <= data.height);
        }

        function test_sheetsComeUpOverAnyPage_data() {
            return [0, 1, 2, 3, 4, 5].map(section => ({tag: titles[section], section: section}));
        }
        function test_sheetsComeUpOverAnyPage(data) {
            open("kit", data.section);
            const dialogs = () => ScreenReader.tree(root.Window.window).filter(
                            line => line.startsWith("Dialog: "));
            compare(dialogs(), []);
            prepared.model.kit.showing = true;
            tryVerify(() => dialogs().length > 0);
            verify(dialogs().includes("Dialog: Kit di recupero"));
            prepared.model.kit.showing = false;
            tryVerify(() => dialogs().length === 0);
            prepared.model.access.request = DiskAccess.GatedAction.Backup;
            tryVerify(() => dialogs().includes("Dialog: Serve l'accesso completo al disco"));
            compare(prepared.model.section, data.section);
        }

        function test_longTextsStayInsideThePage_data() {
            return [{tag: "smallest", width: 980, height: 660},
                {tag: "large", width: 1600, height: 1000}];
        }
        function test_longTextsStayInsideThePage(data) {
            open("long");
            resize(data);
            for (let section = 0; section < 6; ++section) {
                prepared.model.section = section;
                Eye.look(root);
                for (const text of texts(area.page)) {
                    const left = text.mapToItem(area, 0, 0).x;
                    verify(left >= 0 && left + text.width <= area.width + 0.5, text.text);
                    // A digit has a cell of its own, which its glyph may outreach.
                    verify(text.truncated || text.text.length === 1
                           || text.paintedWidth <= text.width + 1,
                           "%1: %2 in %3".arg(text.text).arg(text.paintedWidth).arg(text.width));
                }
            }
        }

        function texts(item) {
            let found = [];
            for (const child of Array.from(item.children)) {
                if (child.visible) {
                    if (child.text && child.paintedWidth !== undefined) {
                        found.push(child);
                    }
                    found = found.concat(texts(child));
                }
            }
            return found;
        }
    }
}
