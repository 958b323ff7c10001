pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

// Measures and colours of the panels of the destinations, as they are seen.
Stage {
    id: root

    Case {
        id: test

        name: "Looks"

        function prepare() {
            root.prepared.state = "fresh";
        }

        function made(state, panel) {
            root.prepared.state = state;
            return part(drawn(root.page), panel);
        }

        function place(whole, name) {
            return part(whole, name).mapToItem(whole, 0, 0);
        }

        function test_theHeaderOfEachPanel_data() {
            return [{tag: "local", symbol: "externaldrive"}, {tag: "drive", symbol: "cloud"},
                {tag: "server", symbol: "server.rack"}];
        }
        function test_theHeaderOfEachPanel(data) {
            const header = part(made("allConnected", data.tag), "header");
            const well = part(header, "well");
            compare(well.symbol, data.symbol);
            compare(well.points, 20);
            compare(String(well.color), String(Theme.amber));
            compare(well.x, 0);
            const title = part(header, "title");
            compare([title.font.pixelSize, title.font.weight], [17, Font.DemiBold]);
            const subtitle = part(header, "subtitle");
            compare(subtitle.font.pixelSize, 12);
            compare(String(subtitle.color), String(Theme.secondary));
            const toggle = part(header, "toggle");
            compare(toggle.x + toggle.width, header.width);
            for (const one of [well, toggle]) {
                fuzzyCompare(one.y + one.height / 2, header.height / 2, 0.51);
            }
            verify(place(header, "title").x > well.width);
        }

        function test_thePanelIsARaisedBlock() {
            const panel = made("noDisk", "local");
            const header = part(panel, "header");
            compare(header.mapToItem(panel, 0, 0).x, 18);
            compare(header.mapToItem(panel, 0, 0).y, 18);
            compare(header.width, panel.width - 36);
        }

        function test_theBarIsFilledAsFarAsTheDiskIs() {
            const usage = part(made("disk", "local"), "usage");
            const meter = part(usage, "meter");
            compare(meter.height, 6);
            compare(meter.width, usage.width);
            const isAmber = share => {
                const seen = Eye.at(meter, meter.width * share, 3);
                return seen.r > 0.9 && seen.g > 0.65 && seen.b < 0.45;
            };
            verify(isAmber(0.02));
            verify(isAmber(0.64));
            verify(!isAmber(0.66));
            const words = part(usage, "words");
            compare(words.font.pixelSize, 12);
            verify(words.y >= meter.height);
        }

        function test_theDotOfADiskThatIsAwayIsCoral() {
            const dot = part(made("diskAway", "local"), "away");
            looks(dot, 3.5, dot.height / 2, Colours.coral);
        }

        function test_theSwitchIsAmberWhenOn() {
            const toggle = part(made("disk", "local"), "toggle");
            looks(toggle, 10, 12.5, Colours.part(Colours.amberFade, 0.5));
        }

        function test_metricsStandInARowWithTheButton() {
            const panel = made("growthDays", "local");
            const row = part(panel, "metrics");
            const names = ["action", "free", "versions", "stored"];
            for (let i = 1; i < names.length; ++i) {
                const before = part(row, names[i - 1]);
                const one = part(row, names[i]);
                compare(one.y, before.y);
                fuzzyCompare(one.x - before.x - before.width, 24, 1e-6);
            }
        }

        function test_theFieldsOfTheServerFillTheirRows() {
            const fields = part(made("sftp", "server"), "fields");
            for (const [left, right] of [["host", "port"], ["user", "secret"],
                                         ["keyFile", "path"]]) {
                const one = part(fields, left);
                const other = part(fields, right);
                compare(one.y, other.y);
                fuzzyCompare(one.x + one.width + 14, other.x, 1e-6);
                fuzzyCompare(other.x + other.width, fields.width, 1e-6);
            }
        }

        function test_theSpinnerTurnsBesideItsWords() {
            const panel = made("driveConnecting", "drive");
            const spinner = part(panel, "spinner");
            const text = part(panel, "waitingText");
            compare(spinner.width, 16);
            fuzzyCompare(text.x, spinner.width + 9, 1e-6);
            fuzzyCompare(spinner.y + spinner.height / 2, text.y + text.height / 2, 1.01);
            Motion.still = false;
            verify(spinner.moving);
        }

        function test_aWarningStandsOut() {
            const line = part(made("tooSmall", "local"), "forecast");
            const words = part(line, "words");
            verify(Colours.contrast(words.color, Eye.at(line, line.width - 1, 2)) >= 3);
        }
    }
}
