pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

Item {
    id: root

    width: 980
    height: 660

    SignalSpy {
        id: measurements
        signalName: "measuringChanged"
    }

    SheetCase {
        name: "AccessSheet"

        // The sheets, with an ear to the measurements of their model.
        function watched() {
            const item = made("access");
            measurements.target = item.model.sources.measurement;
            measurements.clear();
            return item;
        }

        function shown(action) {
            const item = watched();
            raise(item, item.access, action ?? DiskAccess.GatedAction.Backup);
            return item;
        }

        // Each action in each way.
        function answers() {
            const rows = [];
            for (const [name, action] of [["backup", DiskAccess.GatedAction.Backup],
                     ["measurement", DiskAccess.GatedAction.Measure]]) {
                for (const {tag, way} of ways()) {
                    rows.push({tag: name + " by " + tag, action: action, way: way});
                }
            }
            return rows;
        }

        // The backup or the measurement runs, and never both.
        function runs(item, action) {
            if (action === DiskAccess.GatedAction.Backup) {
                compare(item.prepared.takeAsked(), ["start"]);
                verify(item.model.run.launching);
                compare(measurements.count, 0);
            } else {
                tryCompare(measurements, "count", 2); // it begins and ends
                verify(!item.model.sources.measurement.measuring);
                compare(item.prepared.takeAsked(), []);
                verify(!item.model.run.launching);
            }
        }

        function test_showsTheseTextsInThisOrder() {
            const item = shown();
            compare(texts(item.access),
                    ["Serve l'accesso completo al disco", "Si concede una volta sola",
                        "Senza questo permesso macOS chiede conferma per ogni cartella e il backup salta Mail, Safari e Messaggi.",
                        "1", "Apri Impostazioni di Sistema.",
                        "2", "Attiva Vellomar nell'elenco.",
                        "3", "Quando macOS lo chiede, scegli Esci e riapri.",
                        "Continua senza", "Apri Impostazioni"]);
            compare(part(item.access, "settings").kind, PillButton.Kind.Primary);
            compare(part(item.access, "without").kind, PillButton.Kind.Outline);
            compare(part(item.access, "well").symbol, "lock.open");
        }

        function test_returnOpensTheSettings() {
            const item = shown();
            item.forceActiveFocus(); // none of the sheet's controls has the focus
            keyClick(Qt.Key_Return);
            compare(item.prepared.takeAsked(), ["settings"]);
            tryCompare(item.access, "visible", false);
        }

        function test_aStepsNumeralIsBoldOnAnAmberDisc() {
            const item = shown();
            for (const number of [1, 2, 3]) {
                const step = part(item.access, "step" + number);
                const disc = part(step, "disc");
                const numeral = part(step, "numeral");
                compare(disc.width, 22);
                compare(disc.height, 22);
                compare(disc.radius, 11);
                compare(disc.fill, Theme.amberGradient);
                compare(numeral.font.pixelSize, 12);
                compare(numeral.font.weight, Font.Bold);
                compare(numeral.color.toString(), Theme.ink.toString());
            }
        }

        function test_aBackupWithoutAccessBringsItUp() {
            const item = watched();
            item.model.startBackup();
            tryCompare(item.access, "opened", true);
            compare(item.access.action, DiskAccess.GatedAction.Backup);
            compare(item.prepared.takeAsked(), []);
        }

        function test_soDoesAMeasurement() {
            const item = watched();
            item.model.measureSources();
            tryCompare(item.access, "opened", true);
            compare(item.access.action, DiskAccess.GatedAction.Measure);
            compare(measurements.count, 0);
        }

        function test_continuingWithoutAccessRunsTheBackupOrTheMeasurement_data() {
            return answers();
        }
        function test_continuingWithoutAccessRunsTheBackupOrTheMeasurement(data) {
            const item = shown(data.action);
            press(part(item.access, "without"), data.way);
            compare(item.model.access.request, DiskAccess.GatedAction.None);
            tryCompare(item.access, "visible", false);
            runs(item, data.action);
        }

        function test_theSettingsRememberWhatWaits_data() { return answers(); }
        function test_theSettingsRememberWhatWaits(data) {
            const item = shown(data.action);
            press(part(item.access, "settings"), data.way);
            compare(item.prepared.takeAsked(), ["settings"]);
            compare(item.model.access.request, DiskAccess.GatedAction.None);
            tryCompare(item.access, "visible", false);
            compare(measurements.count, 0);
            verify(!item.model.run.launching);
            // The user comes back with the access given.
            item.prepared.giveAccess();
            item.model.becomeActive();
            if (data.action === DiskAccess.GatedAction.Backup) {
                tryCompare(item.model.run, "launching", true);
            }
            runs(item, data.action);
        }

        function test_closedItAbandonsWhatWaited_data() {
            return ways().map(({tag, way}) => ({tag: "cross by " + tag, way: way}))
                .concat([{tag: "escape", way: "escape"}]);
        }
        function test_closedItAbandonsWhatWaited(data) {
            const item = shown();
            if (data.way === "escape") {
                keyClick(Qt.Key_Escape);
            } else {
                press(part(item.access, "cross"), data.way);
            }
            tryCompare(item.access, "visible", false);
            compare(item.model.access.request, DiskAccess.GatedAction.None);
            // Nothing is taken up later either. What is taken up comes before a posted call.
            item.prepared.giveAccess();
            item.model.becomeActive();
            let passed = false;
            Qt.callLater(() => passed = true);
            tryVerify(() => passed);
            compare(item.prepared.takeAsked(), []);
            compare(measurements.count, 0);
            verify(!item.model.run.busy);
        }

        function test_itIsThereForTheActionThatAskedLast() {
            const item = watched();
            item.model.measureSources();
            tryCompare(item.access, "opened", true);
            item.model.startBackup();
            compare(item.access.action, DiskAccess.GatedAction.Backup);
            verify(item.access.opened);
            mouseClick(part(item.access, "without"));
            runs(item, DiskAccess.GatedAction.Backup);
        }

        function test_itFollowsTheModel() {
            const item = watched();
            verify(!item.access.visible);
            for (const action of [DiskAccess.GatedAction.Backup, DiskAccess.GatedAction.Measure]) {
                item.model.access.request = action;
                tryCompare(item.access, "opened", true);
                item.model.access.request = DiskAccess.GatedAction.None;
                tryCompare(item.access, "visible", false);
            }
            compare(item.prepared.takeAsked(), []);
        }

        function test_accessGivenMeanwhileClosesIt() {
            const item = shown();
            // Sent to the settings once before, the user comes back with the access.
            item.model.requestAccessInSettings(DiskAccess.GatedAction.Backup);
            item.model.access.request = DiskAccess.GatedAction.Backup;
            tryCompare(item.access, "opened", true);
            item.prepared.takeAsked();
            item.prepared.giveAccess();
            item.model.becomeActive();
            tryCompare(item.access, "visible", false);
            compare(item.prepared.takeAsked(), ["start"]);
        }

        function test_aRunUnderWayIsNotStartedTwice() {
            const item = shown();
            item.prepared.state = "running";
            item.model.access.request = DiskAccess.GatedAction.Backup;
            mouseClick(part(item.access, "without"));
            compare(item.prepared.takeAsked(), []);
            tryCompare(item.access, "visible", false);
        }

        function test_theScreenReaderFindsItWhole() {
            const item = shown();
            compare(ScreenReader.role(item.access.contentItem), Accessible.Dialog);
            compare(ScreenReader.name(item.access.contentItem),
                    "Serve l'accesso completo al disco");
            for (const [name, text] of [["cross", "Chiudi"], ["without", "Continua senza"],
                     ["settings", "Apri Impostazioni"]]) {
                compare(ScreenReader.role(part(item.access, name)), Accessible.Button);
                compare(ScreenReader.name(part(item.access, name)), text);
            }
            compare(ScreenReader.role(part(item.access, "step2")), Accessible.ListItem);
            compare(ScreenReader.name(part(item.access, "step2")), "2. Attiva Vellomar nell'elenco.");
        }
    }
}
