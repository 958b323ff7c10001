import QtQuick
import QtTest
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Testing
import Vellomar.Window

Item {
    id: root

    width: 980
    height: 660

    PreparedModel { id: prepared }
    Summary { id: summary; model: prepared.model }

    RootView {
        id: view

        anchors.fill: parent
        model: prepared.model
        summary: summary
    }

    SignalSpy { id: abouts; target: view; signalName: "aboutAsked" }
    SignalSpy { id: settings; target: view; signalName: "settingsAsked" }
    SignalSpy { id: licenses; target: view; signalName: "licensesAsked" }
    SignalSpy { id: quits; target: view; signalName: "quitAsked" }

    Case {
        name: "Menu"
        aside: Qt.point(600, 600)

        readonly property AppMenuButton button: findChild(view, "menuButton")
        readonly property var texts: ["Informazioni su Vellomar", "Impostazioni...",
            "Licenze open source", "Esci da Vellomar"]

        function prepare() {
            for (const spy of [abouts, settings, licenses, quits]) {
                spy.clear();
            }
        }

        function cleanup() {
            button.menu.close();
            tryVerify(() => !button.menu.visible);
        }

        function entries() {
            const list = [];
            for (let i = 0; i < button.menu.count; ++i) {
                list.push(button.menu.itemAt(i));
            }
            return list;
        }

        function entry(text) {
            return entries().find(e => e.text === text);
        }

        function counts() {
            return [abouts.count, settings.count, licenses.count, quits.count];
        }

        function openByMouse() {
            mouseClick(button);
            tryVerify(() => button.menu.opened);
        }

        function openByKeys() {
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.ringed);
            keyClick(Qt.Key_Space);
            tryVerify(() => button.menu.opened);
        }

        function test_theEntriesStandInTheirGroups() {
            compare(entries().map(e => e.text ?? "-"),
                    [texts[0], "-", texts[1], "-", texts[2], "-", texts[3]]);
            compare(entry("Impostazioni...").keys, "Ctrl+,");
            compare(entry("Esci da Vellomar").keys, "Ctrl+Q");
        }

        function test_itIsReachedFromTheBrandsRow() {
            compare(button.width, 28);
            compare(button.x + button.width, 222 - 12);
            compare(button.y + button.height / 2, 60 + 13);
            compare(ScreenReader.role(button), Accessible.Button);
            compare(ScreenReader.name(button), "Menu");
        }

        function test_itDropsFromItsButtonInsideTheWindow() {
            openByMouse();
            const top = entries()[0].mapToItem(root, 0, 0);
            verify(top.y > button.y + button.height);
            for (const item of entries()) {
                const place = item.mapToItem(root, 0, 0);
                verify(place.x >= 0 && place.x + item.width <= 980);
                verify(place.y + item.height <= 660);
            }
        }

        function test_aClickDoesWhatTheEntrySays_data() {
            return [{tag: texts[0], index: 0}, {tag: texts[1], index: 1}, {tag: texts[2], index: 2},
                {tag: texts[3], index: 3}];
        }
        function test_aClickDoesWhatTheEntrySays(data) {
            openByMouse();
            mouseClick(entry(data.tag));
            tryVerify(() => !button.menu.visible);
            compare(counts(), [0, 1, 2, 3].map(i => i === data.index ? 1 : 0));
        }

        function test_theKeysGoThroughTheEntries_data() {
            return [{tag: "space", key: Qt.Key_Space}, {tag: "return", key: Qt.Key_Return},
                {tag: "enter", key: Qt.Key_Enter}];
        }
        function test_theKeysGoThroughTheEntries(data) {
            for (let i = 0; i < 4; ++i) {
                openByKeys();
                for (let step = 0; step <= i; ++step) {
                    keyClick(Qt.Key_Down);
                }
                verify(entry(texts[i]).highlighted, texts[i]);
                keyClick(data.key);
                tryVerify(() => !button.menu.visible);
                compare(counts()[i], 1);
                tryVerify(() => button.activeFocus);
            }
            compare(counts(), [1, 1, 1, 1]);
        }

        function test_escapeClosesItAndNothingIsDone() {
            openByKeys();
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !button.menu.visible);
            compare(counts(), [0, 0, 0, 0]);
            tryVerify(() => button.activeFocus);
        }

        function test_aClickBesideClosesIt() {
            openByMouse();
            mouseClick(root, 700, 600);
            tryVerify(() => !button.menu.visible);
            compare(counts(), [0, 0, 0, 0]);
        }

        function test_theScreenReaderHearsIt() {
            openByMouse();
            const lines = ScreenReader.tree(root.Window.window);
            verify(lines.includes("PopupMenu: Menu"), lines);
            compare(lines.filter(line => line.startsWith("MenuItem: ")),
                    texts.map(text => "MenuItem: " + text));
            compare(ScreenReader.faults(root.Window.window), []);
            ScreenReader.perform(entry("Licenze open source"), "Press");
            compare(licenses.count, 1);
        }
    }
}
