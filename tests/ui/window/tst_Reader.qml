import QtQuick
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Testing
import Vellomar.Window

// A screen reader gets all that is in the window.
Item {
    id: root

    width: 980
    height: 660

    Component {
        id: window

        Item {
            property alias prepared: prepared

            width: 980
            height: 660

            PreparedModel { id: prepared }

            RootView {
                anchors.fill: parent
                model: prepared.model
                summary: Summary { model: prepared.model }
            }
        }
    }

    Component {
        id: panel

        MenuPanel {
            property alias prepared: prepared

            width: implicitWidth
            height: implicitHeight
            model: prepared.model
            summary: Summary { model: prepared.model }

            PreparedModel { id: prepared }
        }
    }

    Component { id: licenses; LicensesView { width: 620; height: 520 } }
    Component { id: about; AboutView { width: 300; height: 250; version: "1.2.3" } }

    // Faults that the walk has to find.
    Component {
        id: faulty

        Item {
            Accessible.role: Accessible.Pane
            Accessible.name: "Prova"

            Item {
                width: 10
                height: 10
                activeFocusOnTab: true
            }

            Item {
                width: 10
                height: 10
                Accessible.role: Accessible.PageTab
            }

            Text {
                text: "muto"
                Accessible.ignored: true
            }
        }
    }

    Case {
        name: "Reader"
        readonly property var states: ["fresh", "kit", "waiting", "launching", "scanning",
            "running", "well", "single", "access", "stale", "staleRunning", "failed", "keyError", "starting",
            "support", "long"]

        function open(component, state) {
            const made = drawn(component);
            if (state) {
                made.prepared.state = state;
                compare(made.prepared.state, state);
            }
            Eye.look(root);
            return made;
        }

        function test_theWalkFindsFaults() {
            open(faulty);
            const faults = ScreenReader.faults(root.Window.window);
            compare(faults.length, 4, faults);
            verify(faults[0].startsWith("no name: PageTab"), faults[0]);
            verify(faults[1].startsWith("can't be pressed: PageTab"), faults[1]);
            verify(faults[2].startsWith("the keyboard reaches"), faults[2]);
            compare(faults[3], "the text \"muto\" isn't announced");
        }

        function test_theWalkKnowsAllStates() {
            const made = open(panel, "fresh");
            compare(Array.from(made.prepared.states).sort(), states.slice().sort());
        }

        function test_everySectionIsReportedWhole_data() {
            const rows = [];
            for (const state of states) {
                for (let section = 0; section < 6; ++section) {
                    rows.push({tag: state + " " + section, state: state, section: section});
                }
            }
            return rows;
        }
        function test_everySectionIsReportedWhole(data) {
            const made = open(window, data.state);
            made.prepared.model.section = data.section;
            Eye.look(root);
            compare(ScreenReader.faults(root.Window.window), []);
            const lines = ScreenReader.tree(root.Window.window);
            for (const line of ["StaticText: Vellomar", "Button: Menu", "PageTabList: Sezioni",
                                "PageTab: Panoramica", "PageTab: Impostazioni",
                                "Pane: " + made.prepared.model.title(data.section)]) {
                verify(lines.includes(line), line);
            }
        }

        function test_theSidebarComesBeforeThePage() {
            open(window, "well");
            const lines = ScreenReader.tree(root.Window.window);
            verify(lines.indexOf("PageTab: Impostazioni") < lines.indexOf("Pane: Panoramica"));
        }

        function test_thePanelIsReportedWhole_data() {
            return states.map(state => ({tag: state}));
        }
        function test_thePanelIsReportedWhole(data) {
            const made = open(panel, data.tag);
            compare(ScreenReader.faults(made), []);
            const lines = ScreenReader.tree(made);
            verify(lines.includes("Button: Apri Vellomar"));
            verify(lines.includes("Button: Esci da Vellomar"));
        }

        function test_aRowOfThePanelIsReportedWithItsState() {
            const lines = ScreenReader.tree(open(panel, "fresh"));
            const row = lines.indexOf("Grouping: Google Drive");
            compare(lines.slice(row + 1, row + 3), ["StaticText: Google Drive",
                                                   "StaticText: Non attiva"]);
        }

        function test_theNoticesAreReportedWhole() {
            const made = open(licenses);
            compare(ScreenReader.faults(made), []);
            const lines = ScreenReader.tree(made);
            for (const line of ["RadioButton: restic", "RadioButton: rclone",
                                "Button: Altre licenze", "EditableText: restic"]) {
                verify(lines.includes(line), line);
            }
        }

        function test_aboutIsReportedWhole() {
            compare(ScreenReader.faults(open(about)), []);
        }
    }
}
