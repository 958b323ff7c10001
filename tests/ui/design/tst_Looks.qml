pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Testing

// What the eye would stumble over: marks beside their middle, fading in layers, words too faint.
Item {
    id: root

    readonly property real pixels: Screen.devicePixelRatio
    // Of where a drawing stands, half a pixel can't be helped; nor, where a point is no whole number
    // of pixels, another half for what it stands on.
    readonly property real unhelped: pixels === Math.round(pixels) ? 0.8 : 1.3

    width: 600
    height: 300

    Rectangle {
        id: plain
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    Component { id: box; CheckBox { x: 50; y: 50; text: "Confermo"; checked: true } }
    Component { id: well; GlyphWell { x: 50; y: 50; color: Qt.rgba(1, 1, 1, 1) } }
    Component { id: icon; IconButton { x: 50; y: 50; symbol: "power"; help: "Esci" } }
    Component { id: chevron; Symbol { x: 50; y: 50; weight: Font.DemiBold; color: Theme.text } }
    Component { id: toggle; Switch { x: 50; y: 50; text: "Backup"; checked: true } }
    Component {
        id: stops
        StopSlider {
            x: 50
            y: 50
            width: 300
            name: "Conserva"
            options: [{value: 0, label: "a"}, {value: 1, label: "b"}, {value: 2, label: "c"}]
            selection: 1
        }
    }
    Component {
        id: onThePanel

        Item {
            anchors.fill: parent

            Surface {
                anchors.fill: parent
                fill: Theme.groundGradient
            }

            // Where all grounds are lightest.
            Panel {
                y: 4
                title: "Protezione"

                TextField { objectName: "field"; name: "Nome"; placeholderText: "Nome" }
                Metric { objectName: "metric"; label: "Versioni"; value: "12" }
                StatusDot { objectName: "dot"; text: "Collegato"; color: Theme.mint }
            }
        }
    }

    Case {
        name: "Looks"

        // The box, in pixels, of all in an item but its edge for which a rule of its colour holds.
        function seen(item, edge, holds) {
            const place = item.mapToItem(root, edge, edge);
            const right = (place.x + item.width - 2 * edge) * pixels;
            const bottom = (place.y + item.height - 2 * edge) * pixels;
            const found = {left: 1e9, top: 1e9, right: -1, bottom: -1};
            for (let y = Math.floor(place.y * pixels); y < bottom; ++y) {
                for (let x = Math.floor(place.x * pixels); x < right; ++x) {
                    if (holds(Eye.pixel(x, y))) {
                        found.left = Math.min(found.left, x);
                        found.top = Math.min(found.top, y);
                        found.right = Math.max(found.right, x + 1);
                        found.bottom = Math.max(found.bottom, y + 1);
                    }
                }
            }
            verify(found.right > found.left, "something is seen");
            return found;
        }

        function standsInTheMiddle(found, item, what, thinner) {
            const place = item.mapToItem(root, item.width / 2, item.height / 2);
            const across = (found.left + found.right) / 2 - place.x * pixels;
            const down = (found.top + found.bottom) / 2 - place.y * pixels;
            const most = (thinner ?? 0) + unhelped;
            verify(Math.abs(across) <= most && Math.abs(down) <= most,
                   "%1 is %2 and %3 pixels off".arg(what).arg(across).arg(down));
        }

        function test_theCheckMarkFillsTheMiddleOfItsBox() {
            const item = drawn(box);
            const mark = seen(item, 2.5, pixel => pixel.r < 0.55);
            standsInTheMiddle(mark, item, "check mark", 0.25); // the ends of its strokes are round
            const width = (mark.right - mark.left) / root.pixels;
            verify(width >= 7.9 && width <= 10.1, "it is %1 wide".arg(width));
        }

        function test_symbolsStandInTheMiddleOfTheirWells_data() {
            const rows = [];
            for (const size of [30, 36, 44]) {
                for (const name of ["externaldrive", "cloud", "server.rack", "lock.open"]) {
                    rows.push({tag: name + " in " + size, name: name, size: size});
                }
            }
            return rows;
        }
        function test_symbolsStandInTheMiddleOfTheirWells(data) {
            const item = drawn(well, {size: data.size, symbol: data.name,
                                     points: Math.round(data.size * 0.43)});
            // The rim is fainter than that.
            standsInTheMiddle(seen(item, 0, pixel => pixel.r > 0.55), item, data.name);
        }

        function test_symbolsStandInTheMiddleOfTheirButtons_data() {
            return [{tag: "power"}, {tag: "xmark"}, {tag: "arrow.clockwise"}];
        }
        function test_symbolsStandInTheMiddleOfTheirButtons(data) {
            const item = drawn(icon, {symbol: data.tag});
            standsInTheMiddle(seen(item, 0, pixel => pixel.r > 0.6), item, data.tag);
        }

        function test_aSymbolIsAsWideAsWhatIsDrawn_data() {
            return [{tag: "chevron.right 10", name: "chevron.right", points: 10},
                {tag: "chevron.right 11", name: "chevron.right", points: 11},
                {tag: "chevron.down", name: "chevron.down", points: 10},
                {tag: "checkmark", name: "checkmark", points: 20},
                {tag: "xmark", name: "xmark", points: 20}];
        }
        function test_aSymbolIsAsWideAsWhatIsDrawn(data) {
            const item = drawn(chevron, {name: data.name, points: data.points});
            const inked = Eye.inked(root, Qt.rect(40, 40, 60, 60), plain.color);
            const left = inked.x - 50 * pixels;
            const right = inked.x + inked.width - (50 + item.width) * pixels;
            verify(Math.abs(left) <= unhelped + 0.5, "it begins %1 pixels off".arg(left));
            verify(Math.abs(right) <= unhelped + 0.5, "it ends %1 pixels off".arg(right));
        }

        function test_whatIsDisabledFadesAsAWhole_data() {
            // The first thing stands on the second; each is opaque.
            return [{tag: "knob on its track", component: toggle, x: 31.5, y: 12.5, level: 0.92},
                {tag: "thumb on its rail", component: stops, x: 150, y: 12, level: 0.92}];
        }
        function test_whatIsDisabledFadesAsAWhole(data) {
            drawn(data.component, {enabled: false});
            const x = Math.floor((50 + data.x) * pixels);
            const y = Math.floor((50 + data.y) * pixels);
            const found = Eye.pixel(x, y);
            const level = Colours.over(0.2, data.level, 0.38)[0];
            verify(Math.abs(found.r - level) < 0.02 && Math.abs(found.g - level) < 0.02
                   && Math.abs(found.b - level) < 0.02, "%1 instead of %2".arg(found).arg(level));
        }

        function test_wordsStandOutFromTheirGround() {
            const item = drawn(onThePanel);
            const field = part(item, "field");
            const eyebrow = item.children[1].children[1].children[0];
            compare(eyebrow.text, "Protezione");
            const isEnough = (colour, below, what) => {
                const found = Colours.contrast(colour, below);
                verify(found >= 4.5, "%1: %2".arg(what).arg(found));
            };
            isEnough(eyebrow.color, Eye.at(eyebrow, 300, 6), "eyebrow");
            isEnough(field.placeholderTextColor, Eye.at(field, 150, 14), "placeholder");
            isEnough(Theme.secondary, Eye.at(part(item, "metric"), 200, 10), "metric");
            isEnough(Theme.secondary, Eye.at(part(item, "dot"), 200, 5), "state");
        }
    }
}
