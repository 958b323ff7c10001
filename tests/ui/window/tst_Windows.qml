import QtQuick
import QtTest
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Testing
import Vellomar.Window

Item {
    id: root

    width: 200
    height: 200

    Component {
        id: main

        MainWindow {
            property alias prepared: prepared

            model: prepared.model
            summary: Summary {
                model: prepared.model
            }

            PreparedModel { id: prepared; state: "kit" }
        }
    }

    Component {
        id: tray

        MenuPanelWindow {
            property alias prepared: prepared

            model: prepared.model
            summary: Summary {
                model: prepared.model
            }

            PreparedModel { id: prepared; state: "fresh" }
        }
    }

    Component { id: licenses; LicensesWindow {} }
    Component { id: about; AboutWindow { version: "1.2.3" } }
    Component { id: plain; Window { width: 100; height: 100 } }

    SignalSpy { id: first }
    SignalSpy { id: second }

    Case {
        name: "Windows"
        // Windows without a screen have nothing to be raised above.
        unexpected: /^(?!This plugin does not support raise\(\))/

        function open(component, properties) {
            const window = createTemporaryObject(component, null, properties ?? {});
            verify(!window.visible);
            show(window);
            return window;
        }

        function show(window) {
            window.show();
            window.requestActivate();
            tryVerify(() => window.active);
        }

        function watch(spy, target, name) {
            spy.target = null;
            spy.signalName = name;
            spy.target = target;
            spy.clear();
        }

        function test_theWindowHasItsNameAndItsSizes() {
            const window = open(main);
            compare(window.title, "Vellomar");
            compare(window.width, 1060);
            compare(window.height, 720);
            compare(window.minimumWidth, 980);
            compare(window.minimumHeight, 660);
            const view = window.contentItem.children[0];
            verify((view as RootView) !== null);
            for (const [width, height] of [[980, 660], [1600, 1000]]) {
                window.width = width;
                window.height = height;
                tryCompare(view, "width", width);
                tryCompare(view, "height", height);
            }
        }

        function test_closingItHidesItAndEndsNothing() {
            const window = open(main);
            watch(first, window, "quitAsked");
            window.prepared.model.section = AppModel.Section.Activity;
            window.close();
            tryCompare(window, "visible", false);
            compare(first.count, 0);
            compare(window.prepared.takeAsked(), []);
            show(window);
            compare(window.prepared.model.section, AppModel.Section.Activity);
        }

        function test_theKitDoesNotOutliveIt() {
            const window = open(main);
            const model = window.prepared.model;
            model.kit.showing = true;
            tryVerify(() => ScreenReader.tree(window).includes("Dialog: Kit di recupero"));
            window.close();
            tryCompare(window, "visible", false);
            tryCompare(model.kit, "showing", false);
            show(window);
            tryVerify(() => !ScreenReader.tree(window).includes("Dialog: Kit di recupero"));
        }

        function test_itsKeysWorkOnEverySection() {
            const window = open(main);
            watch(first, window, "quitAsked");
            const model = window.prepared.model;
            for (let section = 0; section < 6; ++section) {
                model.section = section;
                keyClick(Qt.Key_Comma, Qt.ControlModifier);
                compare(model.section, AppModel.Section.Settings);
                keyClick(Qt.Key_Q, Qt.ControlModifier);
                compare(first.count, section + 1);
            }
        }

        function test_itCanBeLeftWithASheetUp() {
            const window = open(main);
            watch(first, window, "quitAsked");
            window.prepared.model.kit.showing = true;
            tryVerify(() => ScreenReader.tree(window).includes("Dialog: Kit di recupero"));
            keyClick(Qt.Key_Q, Qt.ControlModifier);
            compare(first.count, 1);
            window.prepared.model.prepareToQuit();
            tryVerify(() => !ScreenReader.tree(window).includes("Dialog: Kit di recupero"));
            window.prepared.takeAsked();
        }

        function test_theMenusEntriesReachIt() {
            const window = open(main);
            const names = ["aboutAsked", "licensesAsked", "quitAsked"];
            const view = window.contentItem.children[0];
            for (const name of names) {
                watch(first, window, name);
                view[name]();
                compare(first.count, 1);
            }
            view.settingsAsked();
            compare(window.prepared.model.section, AppModel.Section.Settings);
        }

        function test_theSettingsBringAHiddenWindowUp() {
            const window = open(main);
            window.close();
            tryCompare(window, "visible", false);
            window.goToSettings();
            tryVerify(() => window.visible && window.active);
            compare(window.prepared.model.section, AppModel.Section.Settings);
        }

        function test_comingUpKeepsItAsLargeAsItIs() {
            const window = open(main);
            window.showMaximized();
            tryCompare(window, "visibility", Window.Maximized);
            window.comeUp();
            compare(window.visibility, Window.Maximized);
        }

        function test_comingBackItIsAsLargeAsItWas_data() {
            return [{tag: "ordinary", size: Window.Windowed},
                {tag: "maximised", size: Window.Maximized},
                {tag: "full screen", size: Window.FullScreen}];
        }
        function test_comingBackItIsAsLargeAsItWas(data) {
            const window = open(main);
            for (const away of [Window.Hidden, Window.Minimized]) {
                window.visibility = data.size;
                tryCompare(window, "seenAs", data.size); // reported by the event loop
                window.visibility = away;
                tryCompare(window, "visibility", away);
                wait(0);
                window.comeUp();
                tryCompare(window, "visibility", data.size);
            }
        }

        function test_thePanelIs330WideAndAsHighAsItsContent() {
            const window = open(tray);
            compare(window.width, 330);
            const panel = window.contentItem.children[0];
            verify((panel as MenuPanel) !== null);
            for (const state of ["fresh", "well", "running", "single"]) {
                window.prepared.state = state;
                tryCompare(window, "height", Math.round(panel.implicitHeight));
                verify(window.flags & Qt.FramelessWindowHint);
            }
        }

        function test_thePanelGoesOnEscape() {
            const window = open(tray);
            keyClick(Qt.Key_Escape);
            tryCompare(window, "visible", false);
            show(window);
            verify(window.visible);
        }

        function test_thePanelGoesWhenTheUserTurnsAway() {
            const window = open(tray);
            const other = open(plain);
            verify(other.active);
            tryCompare(window, "visible", false);
        }

        function test_thePanelGoesTooWhenItHadTheFocusBeforeItWasKnownToBeVisible() {
            const window = open(tray);
            window.visibleChanged(true); // as where the focus comes while the window is being shown
            const other = open(plain);
            verify(other.active);
            tryCompare(window, "visible", false);
        }

        function test_thePanelPassesOnWhatIsAsked() {
            const window = open(tray);
            watch(first, window, "windowAsked");
            watch(second, window, "quitAsked");
            mouseClick(part(window.contentItem, "open"));
            compare([first.count, second.count], [1, 0]);
            mouseClick(part(window.contentItem, "power"));
            compare([first.count, second.count], [1, 1]);
        }

        function test_theNoticesHaveAWindowThatKeepsItsSize() {
            const window = open(licenses);
            compare(window.title, "Licenze open source");
            for (const property of ["width", "minimumWidth", "maximumWidth"]) {
                compare(window[property], 620);
            }
            for (const property of ["height", "minimumHeight", "maximumHeight"]) {
                compare(window[property], 520);
            }
            compare(part(window.contentItem, "scrolling").width, 580);
        }

        function test_aboutHasAWindowThatKeepsItsSize() {
            const window = open(about);
            compare(window.title, "Informazioni su Vellomar");
            const view = window.contentItem.children[0];
            compare(window.width, view.implicitWidth);
            compare(window.height, Math.round(view.implicitHeight));
            compare([window.minimumWidth, window.maximumWidth], [window.width, window.width]);
            compare([window.minimumHeight, window.maximumHeight], [window.height, window.height]);
            verify(ScreenReader.tree(window).includes("StaticText: Versione 1.2.3"));
        }

        function test_theyGoByKeys_data() {
            return [{tag: "notices, Escape", component: licenses, keys: [Qt.Key_Escape]},
                {tag: "notices, Ctrl+W", component: licenses,
                 keys: [Qt.Key_W, Qt.ControlModifier]},
                {tag: "about, Escape", component: about, keys: [Qt.Key_Escape]},
                {tag: "about, Ctrl+W", component: about, keys: [Qt.Key_W, Qt.ControlModifier]}];
        }
        function test_theyGoByKeys(data) {
            const window = open(data.component);
            keyClick(data.keys[0], data.keys[1] ?? Qt.NoModifier);
            tryCompare(window, "visible", false);
        }

        function test_theProgramCanBeLeftFromAnyWindow_data() {
            return [{tag: "notices", component: licenses}, {tag: "about", component: about}];
        }
        function test_theProgramCanBeLeftFromAnyWindow(data) {
            const window = open(main);
            watch(first, window, "quitAsked");
            open(data.component);
            keyClick(Qt.Key_Q, Qt.ControlModifier);
            compare(first.count, 1);
            keyClick(Qt.Key_Comma, Qt.ControlModifier);
            compare(window.prepared.model.section, AppModel.Section.Settings);
            tryVerify(() => window.active);
        }
    }
}
