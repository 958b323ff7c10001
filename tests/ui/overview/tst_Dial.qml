pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Testing

Item {
    id: root

    width: 320
    height: 320

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    PreparedModel { id: prepared }
    Summary { id: summed; model: prepared.model }

    Component { id: dial; TimeDial { x: 20; y: 20; summary: summed } }
    Component { id: fontMetrics; FontMetrics {} }
    SignalSpy { id: spy }

    Case {
        name: "Dial"

        function prepare() {
            prepared.state = "fresh";
        }

        function made(properties) {
            return drawn(dial, properties);
        }

        // Whether two lengths are the same, except for rounding to whole pixels.
        function isLength(actual, expected, what) {
            const most = 0.5 / root.Screen.devicePixelRatio + 1e-6;
            verify(Math.abs(actual - expected) <= most,
                   "%1 is %2 instead of %3".arg(what).arg(actual).arg(expected));
        }

        // The middle of the row of pixels that a height is in.
        function row(y) {
            const scale = root.Screen.devicePixelRatio;
            return (Math.floor(y * scale) + 0.5) / scale;
        }

        // The bezel's colour at a height, for a dial of 236 that is placed at 20.
        function bezelAt(y) {
            return Colours.part([[0.135, 0.375, 0.405], [0.045, 0.165, 0.185]],
                                (row(y) - 20) / 236);
        }

        function wellAt(y) {
            const inset = 0.17 * 236;
            return Colours.part([[0.03, 0.125, 0.14], [0.065, 0.225, 0.245]],
                                (row(y) - 20 - inset) / (236 - 2 * inset));
        }

        // A point of the dial at a distance from its centre and an angle clockwise from the top.
        function point(distance, degrees) {
            const angle = degrees / 180 * Math.PI;
            return {x: 138 + distance * Math.sin(angle), y: 138 - distance * Math.cos(angle)};
        }

        function test_everyMeasureIsAFractionOfTheDiameter_data() {
            return [{tag: "236", size: 236}, {tag: "151", size: 151}, {tag: "150", size: 150},
                {tag: "86", size: 86}];
        }
        function test_everyMeasureIsAFractionOfTheDiameter(data) {
            const item = made({diameter: data.size});
            const size = data.size;
            compare(item.width, size);
            compare(item.height, size);

            const bezel = part(item, "bezel");
            compare(bezel.width, size);
            compare(bezel.height, size);
            compare(bezel.radius, size / 2);
            fuzzyCompare(bezel.rimWidth, Math.max(1, 0.006 * size), 1e-6);
            fuzzyCompare(bezel.shadowRadius, 0.09 * size, 1e-6);
            fuzzyCompare(bezel.shadowOffset.y, 0.055 * size, 1e-6);
            compare(bezel.shadowOffset.x, 0);

            const ring = part(item, "ring");
            isLength(ring.x, 0.05 * size, "the ring's inset");
            compare(ring.y, ring.x);
            fuzzyCompare(ring.width, size - 2 * ring.x, 1e-6);
            compare(ring.count, 48);
            compare(ring.length, 0.17);
            compare(ring.thickness, 0.028);
            compare(ring.majorEvery, 12);

            const marker = part(item, "marker");
            fuzzyCompare(marker.width, 0.026 * size, 1e-6);
            compare(marker.shadowRadius, 3);

            const well = part(item, "well");
            isLength(well.x, 0.17 * size, "the well's inset");
            compare(well.y, well.x);
            fuzzyCompare(well.width, size - 2 * well.x, 1e-6);
            compare(well.radius, well.width / 2);
            fuzzyCompare(well.rimWidth, Math.max(1, 0.008 * size), 1e-6);

            const text = part(item, "text");
            fuzzyCompare(text.width, 0.54 * size, 1e-6);
            fuzzyCompare(text.spacing, 0.012 * size, 1e-6);
            compare(part(item, "value").font.pixelSize, Math.round(0.165 * size));
            compare(part(item, "value").font.weight, Font.DemiBold);
            compare(part(item, "value").minimumScale, 0.5);
        }

        // The bounding box, in the dial's points, of all that is lighter than the well.
        function written(item) {
            Eye.look(root);
            const scale = root.Screen.devicePixelRatio;
            const across = 0.27 * item.diameter; // up to the well's rim
            const down = 0.18 * item.diameter;
            const middle = item.x + item.diameter / 2;
            const found = {left: 1e9, top: 1e9, right: -1, bottom: -1};
            for (let y = Math.round((middle - down) * scale); y < (middle + down) * scale; ++y) {
                for (let x = Math.round((middle - across) * scale); x < (middle + across) * scale;
                        ++x) {
                    if (Eye.pixel(x, y).r > 0.3) {
                        found.left = Math.min(found.left, x);
                        found.top = Math.min(found.top, y);
                        found.right = Math.max(found.right, x + 1);
                        found.bottom = Math.max(found.bottom, y + 1);
                    }
                }
            }
            for (const side in found) {
                found[side] = found[side] / scale - item.x;
            }
            return found;
        }

        function test_theTextStandsInTheMiddle_data() {
            return [{tag: "fresh", size: 236}, {tag: "well", size: 236},
                {tag: "running", size: 236}, {tag: "stale", size: 236}, {tag: "well", size: 86},
                {tag: "running", size: 86}];
        }
        function test_theTextStandsInTheMiddle(data) {
            prepared.state = data.tag;
            const item = made({diameter: data.size});
            const text = part(item, "text");
            fuzzyCompare(text.x + text.width / 2, data.size / 2, 0.01);
            const found = written(item);
            fuzzyCompare((found.left + found.right) / 2, data.size / 2, 1.5);
            // Two dashes have the height of digits in the layout, but are drawn lower.
            const most = data.tag === "fresh" ? 9 : 1.5;
            fuzzyCompare((found.top + found.bottom) / 2, data.size / 2, most);
        }

        function test_partsOfTheTextStandWhereTheDesignSays() {
            const item = made();
            const value = part(item, "value");
            const caption = part(item, "caption");
            fuzzyCompare(caption.y - value.y - value.height, 0.012 * 236, 1e-6);
        }

        function test_digitsTakeTheSameRoomOnlyWhileTheyRun() {
            const item = made();
            const value = part(item, "value");
            prepared.state = "running";
            verify(value.steady);
            prepared.setPercent(0.11);
            const ones = value.implicitWidth;
            prepared.setPercent(0.28);
            compare(value.implicitWidth, ones);
            prepared.state = "well"; // 12 min
            verify(!value.steady);
            Eye.look(root);
            const metrics = createTemporaryObject(fontMetrics, root, {font: value.font});
            fuzzyCompare(value.implicitWidth, metrics.advanceWidth("12 min"), 0.5);
        }

        function test_theCaptionIsOnlyShownAbove150_data() {
            return [{tag: "86", size: 86, shown: false}, {tag: "150", size: 150, shown: false},
                {tag: "150.5", size: 150.5, shown: true}, {tag: "236", size: 236, shown: true}];
        }
        function test_theCaptionIsOnlyShownAbove150(data) {
            compare(part(made({diameter: data.size}), "caption").visible, data.shown);
        }

        function test_valueAndCaptionAreThoseOfTheState_data() {
            return [
                {tag: "fresh", value: "--", caption: "nessun backup"},
                {tag: "waiting", value: "--", caption: "nessun backup"},
                {tag: "launching", value: "...", caption: "dall'ultimo backup"},
                {tag: "scanning", value: "0%", caption: "Analisi dei file"},
                {tag: "running", value: "42%", caption: "Copia dei file"},
                {tag: "well", value: "12 min", caption: "dall'ultimo backup"},
                {tag: "failed", value: "30 h", caption: "dall'ultimo backup"},
                {tag: "stale", value: "3 g", caption: "dall'ultimo backup"}];
        }
        function test_valueAndCaptionAreThoseOfTheState(data) {
            prepared.state = data.tag;
            const item = made();
            compare(part(item, "value").text, data.value);
            compare(part(item, "caption").words, data.caption);
            compare(ScreenReader.role(item), Accessible.StaticText);
            compare(ScreenReader.name(item), data.value + " " + data.caption);
            compare(ScreenReader.tree(item).length, 1);
        }

        function test_theFontsAreThoseOfTheDesign() {
            const item = made();
            compare(part(item, "value").font.family, Theme.roundedFamily);
            const caption = part(item, "caption");
            compare(caption.font.family, Theme.textFamily);
            compare(caption.font.pixelSize, 12);
            compare(String(caption.color), String(Theme.secondary));
        }

        function test_theBezelFadesDownwards() {
            made();
            // Away from the marker of the current time.
            const away = summed.nowFraction * 360 + 180;
            for (const turn of [-75, -40, 0, 40, 75]) {
                const place = point(110.5, away + turn);
                looks(root, place.x, place.y, bezelAt(place.y), "at " + turn);
            }
        }

        function test_itCastsAShadowBelow() {
            made();
            verify(Eye.at(root, 138, 262).r < 0.16);
            verify(Eye.at(root, 138, 262).r < Eye.at(root, 138, 14).r);
        }

        function test_itsRimFadesDownwards() {
            const item = made();
            compare(part(item, "bezel").rim, Theme.rim);
            // Halfway down, on the side away from the marker of the current time.
            const x = summed.nowFraction < 0.5 ? 20.4 : 20 + 236 - 0.4;
            const opacity = 0.24 - 0.21 * (row(138) - 20) / 236;
            looks(root, x, 138, Colours.over(bezelAt(138), 1, opacity), "rim");
        }

        function test_theWellIsRecessed() {
            made();
            for (const y of [75, 80, 190, 200]) {
                looks(root, 138, y, wellAt(y), "at " + y);
            }
            // Dark above, lit below.
            const top = 20 + 0.17 * 236 + 0.7;
            const bottom = 20 + 0.83 * 236 - 0.7;
            looks(root, 138, top, Colours.over(wellAt(top), 0, 0.5), "upper rim");
            looks(root, 138, bottom, Colours.over(wellAt(bottom), 1, 0.16), "lower rim");
        }

        function test_litTicksAreAmber() {
            prepared.state = "running";
            prepared.setPercent(1);
            made();
            for (const degrees of [0, 90, 180, 270, 7.5, 97.5]) {
                const place = point(95, degrees);
                looks(root, place.x, place.y, Colours.amber, degrees);
            }
        }

        function test_otherTicksAreAFaintWhite() {
            made();
            for (const degrees of [90, 270]) {
                const place = point(95, degrees);
                looks(root, place.x, place.y, Colours.over(bezelAt(place.y), 1, 0.34), degrees);
            }
        }

        function test_theMarkerIsWhiteAndGlowsWhereTheTimeIs() {
            const item = made();
            const marker = part(item, "marker");
            const degrees = summed.nowFraction * 360;
            const place = point((0.5 - 0.024) * 236, degrees);
            fuzzyCompare(20 + marker.x + marker.width / 2, place.x, 1e-3);
            fuzzyCompare(20 + marker.y + marker.height / 2, place.y, 1e-3);
            looks(root, place.x, place.y, 1, "marker");
            const beside = point((0.5 - 0.024) * 236, degrees + 2.6);
            verify(Eye.at(root, beside.x, beside.y).r > bezelAt(beside.y)[0] + 0.05);
        }

        function test_theRingFillsWithTheRun_data() {
            return [{tag: "negative", percent: -1, lit: 0}, {tag: "none", percent: 0, lit: 0},
                {tag: "tiny", percent: 1e-6, lit: 1}, {tag: "half", percent: 0.5, lit: 24},
                {tag: "all", percent: 1, lit: 48}, {tag: "more", percent: 3, lit: 48}];
        }
        function test_theRingFillsWithTheRun(data) {
            prepared.state = "running";
            prepared.setPercent(data.percent);
            const lit = part(made(), "ring").lit;
            for (let i = 0; i < 48; ++i) {
                compare(lit[i], i < data.lit, i);
            }
        }

        function test_withoutVersionsNoTickIsLit() {
            const lit = part(made(), "ring").lit;
            compare(lit.length, 48);
            verify(!lit.some(shines => shines));
        }

        function test_theProgressOfARunFadesIn() {
            prepared.state = "running";
            const ring = part(made(), "ring");
            Motion.still = false;
            prepared.setPercent(0.6);
            compare(ring.transition, 400);
            verify(ring.lit[28]);
        }

        function test_aNewVersionIsLitAtOnce() {
            prepared.state = "waiting";
            const ring = part(made(), "ring");
            Motion.still = false;
            prepared.state = "well";
            verify(ring.lit.some(shines => shines));
            compare(ring.transition, 0);
        }

        function test_aSecondOfARunPaintsOnlyTheText() {
            prepared.state = "running";
            const item = made();
            const value = part(item, "value");
            for (const [name, signal] of [["bezel", "styleChanged"], ["ring", "litChanged"],
                                          ["well", "styleChanged"], ["marker", "xChanged"]]) {
                prepared.setPercent(0.431);
                spy.target = null;
                spy.signalName = signal;
                spy.target = part(item, name);
                spy.clear();
                prepared.setPercent(0.436);
                prepared.setPercent(0.4361);
                compare(spy.count, 0, name);
            }
            compare(value.text, "43%");
        }

        function test_aLongCaptionStaysInTheWell() {
            prepared.state = "long";
            const item = made();
            const caption = part(item, "caption");
            verify(caption.truncated);
            compare(caption.lineCount, 2);
            compare(caption.textFormat, Text.PlainText);
            const text = part(item, "text");
            verify(text.height < 0.66 * 236 * 0.8);
        }

        function test_aLongValueShrinks() {
            prepared.state = "running";
            prepared.setPercent(1);
            const item = made({diameter: 86});
            const value = part(item, "value");
            compare(value.text, "100%");
            const digits = value.children[0];
            verify(digits.implicitWidth * digits.scale <= 0.54 * 86 + 0.01);
        }
    }
}
