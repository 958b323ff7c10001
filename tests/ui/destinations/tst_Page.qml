pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

// The page of the destinations as a whole.
Stage {
    id: root

    Case {
        id: test

        name: "Page"

        readonly property list<string> panels: ["space", "local", "drive", "server"]

        function prepare() {
            root.prepared.state = "fresh";
        }

        function made(state) {
            root.prepared.state = state;
            return drawn(root.page);
        }

        function test_titleAndSubtitle() {
            const page = made("noDisk");
            compare(page.title, "Destinazioni");
            compare(page.subtitle, "I backup sono indipendenti e cifrati. Se una destinazione non "
                    + "è raggiungibile, le altre partono lo stesso.");
        }

        function test_itsPanelsInTheirOrder() {
            const page = made("noDisk");
            let end = 0;
            for (const name of panels) {
                const panel = part(page, name);
                compare(panel.width, 760 - 72);
                compare(panel.mapToItem(page.contentItem, 0, 0).x, 36);
                if (end > 0) {
                    fuzzyCompare(panel.y - end, 16, 1e-6, name);
                }
                end = panel.y + panel.height;
            }
            const names = ScreenReader.tree(page).filter(line => line.startsWith("Grouping: "));
            compare(names.slice(0, 4).map(line => line.slice(10)), ["Spazio necessario",
                "Disco esterno", "Google Drive", "Server privato"]);
        }

        function test_everyStateIsReportedWholeAndWithinThePage_data() {
            return root.prepared.destinationsStates.map(state => ({tag: state}));
        }
        function test_everyStateIsReportedWholeAndWithinThePage(data) {
            const page = made(data.tag);
            compare(ScreenReader.faults(root.Window.window), []);
            for (const item of textItems(page)) {
                const left = item.mapToItem(page, 0, 0).x;
                verify(left >= 0 && left + item.width <= page.width, item.text);
            }
        }

        function test_theQuotaIsReadAtEveryAppearance() {
            const words = page => part(part(part(page, "drive"), "usage"), "words").line;
            const page = made("driveConnected");
            compare(words(page), "31 GB usati di 200 GB");
            root.prepared.setDriveQuota(50e9, 200e9);
            compare(words(page), "31 GB usati di 200 GB");
            page.destroy();
            compare(words(drawn(root.page)), "50 GB usati di 200 GB");
        }

        function test_tabGoesByWhatCanBeDone() {
            const page = made("sftp");
            const order = [];
            page.forceActiveFocus();
            for (let i = 0; i < 14; ++i) {
                keyClick(Qt.Key_Tab);
                const on = focused();
                order.push(on.objectName || on.name || on.text);
            }
            compare(order, ["measure", "toggle", "action", "signIn", "disclosure", "SFTP",
                "Indirizzo", "Porta", "Utente", "Password",
                "Chiave SSH, al posto della password", "Cartella", "measure", "toggle"]);
        }

        function test_aNarrowPageHasAllOfIt_data() {
            return root.prepared.destinationsStates.map(state => ({tag: state}));
        }
        function test_aNarrowPageHasAllOfIt(data) {
            root.width = 420;
            const page = made(data.tag);
            Eye.look(root);
            for (const item of textItems(page)) {
                const left = item.mapToItem(page, 0, 0).x;
                verify(left >= 0 && left + item.width <= page.width + 0.5, item.text);
            }
            root.width = 760;
        }

        function test_theFocusedFieldComesIntoSight() {
            const page = made("sftp");
            const height = root.height;
            root.height = 400;
            compare(page.contentY, 0);
            part(part(page, "server"), "path").field.forceActiveFocus(Qt.TabFocusReason);
            verify(page.contentY > 0);
            root.height = height;
        }

        function test_anotherModelIsShownWhole() {
            const page = made("noDisk");
            root.prepared.state = "allConnected";
            verify(part(part(page, "server"), "metrics").visible);
            root.prepared.state = "noDisk";
            verify(part(part(page, "server"), "form").visible);
        }
    }
}
