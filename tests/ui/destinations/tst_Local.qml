pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

// The panel of the local disk.
Stage {
    id: root

    Case {
        id: test

        name: "Local"

        function prepare() {
            root.prepared.state = "noDisk";
            root.prepared.state = "fresh";
            root.prepared.takeAsked();
        }

        // The panel of this file in a state.
        function made(state) {
            root.prepared.state = state;
            return part(drawn(root.page), "local");
        }

        function test_withoutAFolderTheDiskCantBeInUse() {
            const panel = made("noDisk");
            root.prepared.model.config.localFolder = "";
            root.prepared.model.config.localEnabled = false;
            compare(part(panel, "title").line, "Disco esterno");
            compare(part(panel, "subtitle").line, "Nessun disco scelto");
            const toggle = part(panel, "toggle");
            verify(!toggle.enabled);
            for (const {way} of ways()) {
                press(toggle, way);
            }
            verify(!toggle.checked);
            verify(!root.prepared.model.config.localEnabled);
            compare(part(panel, "action").text, "Scegli disco o cartella");
            for (const name of ["usage", "away", "sameDisk", "free"]) {
                verify(!part(panel, name).visible, name);
            }
        }

        function test_choosingAFolderPutsItToUse_data() {
            return ways();
        }
        function test_choosingAFolderPutsItToUse(data) {
            const panel = made("noDisk");
            root.prepared.model.config.localFolder = "";
            root.prepared.model.config.localEnabled = false;
            root.prepared.chooseFolders(["/media/anna/Nuovo"]);
            press(part(panel, "action"), data.way);
            compare(root.prepared.takeAsked(), ["folder"]);
            compare(root.prepared.model.config.localFolder, "/media/anna/Nuovo");
            verify(root.prepared.model.config.localEnabled);
            compare(part(panel, "subtitle").line, "/media/anna/Nuovo");
            verify(part(panel, "toggle").checked);
            compare(part(panel, "action").text, "Cambia");
        }

        function test_cancellingTheChoiceChangesNothing() {
            const panel = made("disk");
            root.prepared.chooseFolders([]);
            const before = root.prepared.model.config.localFolder;
            mouseClick(part(panel, "action"));
            compare(root.prepared.model.config.localFolder, before);
        }

        function test_aDiskShowsItsRoom() {
            const panel = made("disk");
            const usage = part(panel, "usage");
            verify(usage.visible);
            compare(part(usage, "words").line, "1,3 TB usati di 2 TB");
            fuzzyCompare(part(usage, "meter").fraction, 0.65, 1e-6);
            compare(part(panel, "free").value, "700 GB");
            compare(part(panel, "free").label, "Spazio libero");
            compare(ScreenReader.name(part(panel, "free")), "Spazio libero: 700 GB");
            compare(ScreenReader.name(part(usage, "meter")), "1,3 TB usati di 2 TB");
            verify(!part(panel, "away").visible);
        }

        function test_aDiskThatIsAwayIsSaidToBe() {
            const panel = made("diskAway");
            const away = part(panel, "away");
            verify(away.visible);
            compare(away.text, "Disco non collegato");
            compare(String(away.color), String(Theme.coral));
            verify(!part(panel, "usage").visible);
            verify(!part(panel, "free").visible);
            compare(part(panel, "action").text, "Cambia");
            verify(part(panel, "action").enabled);
            root.prepared.chooseFolders(["/media/anna/Nuovo"]);
            mouseClick(part(panel, "action"));
            compare(root.prepared.model.config.localFolder, "/media/anna/Nuovo");
        }

        function test_whatIsntKnownOfADiskIsntShown() {
            const panel = made("diskUnknown");
            for (const name of ["away", "usage", "free", "sameDisk"]) {
                verify(!part(panel, name).visible, name);
            }
            compare(part(panel, "action").text, "Cambia");
        }

        function test_aFolderOnTheDiskOfTheSystemIsCautionedAgainst() {
            verify(!part(made("disk"), "sameDisk").visible);
            const caution = part(made("systemDisk"), "sameDisk");
            verify(caution.visible);
            compare(caution.text, "Questa cartella è sullo stesso disco del Mac: se il disco si "
                    + "rompe perdi i file e il backup insieme. Meglio un disco esterno.");
            compare(part(caution, "sign").name, "exclamationmark.triangle");
            compare(String(part(caution, "sign").color), String(Theme.amber));
        }

        function test_theSwitchIsTheSetting_data() {
            return ways();
        }
        function test_theSwitchIsTheSetting(data) {
            const panel = made("growthDays");
            const toggle = part(panel, "toggle");
            verify(toggle.checked);
            compare(part(panel, "versions").value, "41");
            press(toggle, data.way);
            verify(!root.prepared.model.config.localEnabled);
            verify(!toggle.checked);
            // The destination was read anew: out of use, it has no versions on show.
            verify(!part(panel, "versions").visible);
            press(toggle, data.way);
            verify(root.prepared.model.config.localEnabled);
            compare(part(panel, "versions").value, "41");
            compare(ScreenReader.name(toggle), "Disco esterno");
        }

        function test_versionsAndSizeOfTheBackups() {
            const panel = made("growthDays");
            compare([part(panel, "versions").label, part(panel, "versions").value],
                    ["Versioni", "41"]);
            compare([part(panel, "stored").label, part(panel, "stored").value],
                    ["Occupato dai backup", "214 GB"]);
            verify(!part(made("disk"), "stored").visible);
        }

        function test_theForecast_data() {
            return [
                {tag: "fits", text: "Spazio sufficiente: dopo il primo backup restano circa 438 GB "
                    + "liberi."},
                {tag: "tooSmall", warning: true},
                {tag: "growthUnknown",
                    text: "La previsione di crescita arriva dopo qualche giorno di backup."},
                {tag: "growthNegligible", text: "Crescita trascurabile negli ultimi giorni."},
                {tag: "growthDays", warning: true},
                {tag: "growthMonths"},
                {tag: "growthYears"}];
        }
        function test_theForecast(data) {
            const line = part(made(data.tag), "forecast");
            verify(line.visible);
            if (data.text) {
                compare(line.text, data.text);
            }
            compare(part(line, "words").font.pixelSize, 12);
            compare(part(line, "sign").name, data.warning ? "exclamationmark.triangle"
                                                          : "checkmark.circle");
            compare(String(part(line, "sign").color),
                    String(data.warning ? Theme.coral : Theme.mint));
            compare(String(part(line, "words").color),
                    String(data.warning ? Theme.coral : Theme.secondary));
        }

        function test_withNothingToForecastThereIsNoLine() {
            verify(!part(made("disk"), "forecast").visible);
        }
    }
}
