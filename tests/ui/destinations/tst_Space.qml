pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

// What the backups will weigh.
Stage {
    id: root

    Case {
        id: test

        name: "Space"

        function prepare() {
            root.prepared.state = "noDisk";
            root.prepared.state = "fresh";
            root.prepared.takeAsked();
        }

        // The panel of this file in a state.
        function made(state) {
            root.prepared.state = state;
            return part(drawn(root.page), "space");
        }

        function figure(panel, name) {
            const one = part(panel, name);
            return ["label", "value", "note"].map(text => part(one, text)).map(
                item => item.words ?? item.text);
        }

        function test_beforeAMeasurementThereIsNothingToSay() {
            const panel = made("noDisk");
            compare(panel.title, "Spazio necessario");
            compare(figure(panel, "firstBackup"), ["Primo backup", "Da misurare",
                "Peso delle cartelle, tolte le esclusioni. È compresso: di solito occupa meno."]);
            verify(!part(panel, "allVersions").visible);
            compare(part(panel, "measure").text, "Misura le cartelle");
            verify(part(panel, "measure").enabled);
            compare(ScreenReader.name(part(panel, "firstBackup")), "Primo backup: Da misurare");
        }

        function test_aMeasurementIsFollowedAndCantBeStartedAgain() {
            const panel = made("diskMeasuring");
            const [label, value, note] = figure(panel, "firstBackup");
            compare(label, "Primo backup");
            verify(/^fino a [0-9].* [kMGT]B$/.test(value), value);
            compare(note, "Misura in corso...");
            const button = part(panel, "measure");
            verify(!button.enabled);
            fuzzyCompare(button.opacity, 0.38, 1e-6);
            for (const {way} of ways()) {
                press(button, way);
            }
            verify(root.prepared.model.sources.measurement.measuring);
            root.prepared.finish();
            verify(button.enabled);
            compare(button.text, "Misura di nuovo");
            verify(figure(panel, "firstBackup")[1] !== value);
        }

        function test_theButtonMeasures_data() {
            return ways();
        }
        function test_theButtonMeasures(data) {
            const panel = made("noDisk");
            press(part(panel, "measure"), data.way);
            compare(part(panel, "measure").text, "Misura di nuovo");
            verify(part(panel, "firstBackup").figure.value !== "Da misurare");
            verify(part(panel, "allVersions").visible);
        }

        function test_measuringGoesWithoutTheQuestionForTheAccess() {
            const panel = made("access");
            mouseClick(part(panel, "measure"));
            compare(root.prepared.model.access.request, DiskAccess.GatedAction.None);
        }

        function test_theRuleOfThumbAndTheMeasuredGrowth() {
            compare(figure(made("fits"), "allVersions"), ["Con 2 anni di versioni", "circa 524 GB",
                "Regola pratica. Dopo qualche giorno di backup diventa una stima sui tuoi file."]);
            compare(figure(made("growthDays"), "allVersions")[2],
                    "Stima dalla crescita misurata nei backup recenti.");
        }

        function test_theFigureOfAllVersionsFollowsTheSettings() {
            const panel = made("fits");
            root.prepared.model.config.keepDays = 30;
            compare(figure(panel, "allVersions").slice(0, 2),
                    ["Con 1 mese di versioni", "circa 314,4 GB"]);
            root.prepared.model.config.keepDays = 0;
            compare(figure(panel, "allVersions")[0], "Con 5 anni di versioni");
            root.prepared.model.config.keepDays = -1;
            verify(!part(panel, "allVersions").visible);
            verify(part(panel, "firstBackup").visible);
        }

        function test_itsFontsAndColours() {
            const panel = made("fits");
            for (const name of ["firstBackup", "allVersions"]) {
                const one = part(panel, name);
                const font = text => part(one, text).font;
                compare([font("label").pixelSize, font("label").weight], [12, Font.Medium]);
                compare([font("value").pixelSize, font("value").weight], [26, Font.DemiBold]);
                compare(font("note").pixelSize, 10);
            }
            // A rule of thumb is a promise only.
            compare(String(part(part(panel, "firstBackup"), "note").color),
                    String(Theme.secondary));
            compare(String(part(part(panel, "allVersions"), "note").color),
                    String(Theme.tertiary));
        }

        function test_theFiguresStandBesideEachOtherWhereThereIsRoom() {
            const panel = made("fits");
            const first = part(panel, "firstBackup");
            const all = part(panel, "allVersions");
            compare(first.y, all.y);
            compare(all.x, first.width + 24);
            root.width = 440;
            Eye.look(root);
            compare(all.x, 0);
            verify(all.y >= first.y + first.height);
            root.width = 760;
        }
    }
}
