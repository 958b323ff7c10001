pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Testing

// What is rounded and what is drawn in pieces looks whole at any number of pixels a point, and
// wherever it stands between them.
Item {
    id: root

    readonly property real pixels: Screen.devicePixelRatio

    width: 520
    height: 300

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    Component { id: raised; Raised { width: 300; height: 100 } }
    Component { id: pill; PillButton { text: ""; width: 270; height: 50; large: true } }
    Component { id: dot; StatusDot { text: ""; color: Theme.mint } }
    Component { id: ring; Item { width: 28; height: 28; FocusRing { shown: true; around: 14 } } }
    Component { id: wideRing; Item { width: 270; height: 50; FocusRing { shown: true; around: 25 } } }
    Component { id: track; Meter { width: 200; fraction: 0 } }
    Component { id: full; Meter { width: 200; fraction: 1 } }
    Component { id: field; FieldSurface { width: 220; height: 32 } }
    Component {
        id: bar
        ScrollBar {
            height: 120
            orientation: Qt.Vertical
            policy: ScrollBar.AlwaysOn
            size: 0.5
        }
    }
    Component {
        id: stops
        StopSlider {
            width: 300
            name: "Conserva"
            options: [{value: 0, label: ""}, {value: 1, label: ""}, {value: 2, label: ""}]
            selection: 0
        }
    }

    Case {
        name: "Scales"

        readonly property int roundings: 6 // what an edge between two pixels may cost
        // Each stands at another part of a pixel.
        readonly property list<point> places: [Qt.point(60, 60), Qt.point(61, 62),
            Qt.point(62.5, 61), Qt.point(63, 63.25)]

        // Calls for a look at the item at each of the places.
        function everywhere(component, properties, looked) {
            for (const place of places) {
                const item = createTemporaryObject(component, root,
                                                   Object.assign({x: place.x, y: place.y},
                                                                 properties ?? {}));
                Eye.look(root);
                looked(item);
                item.visible = false;
            }
        }

        function inked(left, top, right, bottom) {
            const box = Eye.inked(root, Qt.rect(left, top, right - left, bottom - top),
                                  Qt.rgba(0.2, 0.2, 0.2, 1));
            verify(box.width > 0 && box.height > 0, "something is drawn");
            return box;
        }

        function isMirrored(box) {
            const most = Eye.sidesDiffer(box);
            verify(most <= roundings, "its sides differ by %1 in %2".arg(most).arg(box));
        }

        function isTheSameUpsideDown(box) {
            const most = Eye.halvesDiffer(box);
            verify(most <= roundings, "its halves differ by %1 in %2".arg(most).arg(box));
        }

        function level(x, y) {
            return Eye.pixel(x, y).g;
        }

        function wideShapes() {
            return [{tag: "raised", component: raised, corner: 24},
                {tag: "lifted", component: raised, corner: 24, properties: {lifted: true}},
                {tag: "button", component: pill, corner: 26},
                {tag: "hovered button", component: pill, corner: 30, properties: {hovering: true}},
                {tag: "ring", component: wideRing, corner: 26},
                {tag: "field", component: field, corner: 16},
                {tag: "meter", component: full, corner: 4}];
        }

        function test_aWideShapeIsOneShapeInEveryRow_data() {
            return wideShapes();
        }
        function test_aWideShapeIsOneShapeInEveryRow(data) {
            everywhere(data.component, data.properties, item => {
                // Beyond the shadow's own curve.
                const left = Math.ceil((item.x + data.corner + 42) * pixels);
                const right = Math.floor((item.x + item.width - data.corner - 42) * pixels);
                const most = Eye.rowsDiffer(Qt.rect(left, 0, right - left, 280 * pixels));
                verify(most <= 2, "its rows differ by " + most);
            });
        }

        function test_itsEndsAreMirrorImages_data() {
            return wideShapes().filter(shape => shape.tag !== "hovered button");
        }
        function test_itsEndsAreMirrorImages(data) {
            const around = data.tag === "ring" ? 3 : 0;
            everywhere(data.component, data.properties, item => {
                isMirrored(Qt.rect(Math.round((item.x - around) * pixels), 0,
                                   Math.round((item.width + 2 * around) * pixels), 280 * pixels));
            });
        }

        function test_aRoundShapeIsRound_data() {
            return [{tag: "dot", component: dot, width: 9},
                {tag: "ring", component: ring, width: 40},
                {tag: "track", component: track, width: 210},
                {tag: "scroll bar", component: bar, width: 14}];
        }
        function test_aRoundShapeIsRound(data) {
            everywhere(data.component, {}, item => {
                const box = inked(item.x - 8, item.y - 8, item.x + data.width, item.y + 130);
                isMirrored(box);
                isTheSameUpsideDown(box);
                // Its corners are cut off, and its sides are not.
                const middle = Math.round((box.left + box.right) / 2);
                const corner = Math.abs(level(box.left, box.top) - 0.2);
                const side = Math.abs(level(middle, box.top) - 0.2);
                const pure = Math.abs(level(middle, box.top + 1) - 0.2);
                verify(corner < pure / 2 && side > pure / 2,
                       "%1 at a corner, %2 at a side, %3 inside".arg(corner).arg(side).arg(pure));
            });
        }

        function test_theEndsOfASlidersRailAreRound() {
            everywhere(stops, {}, item => {
                const box = inked(item.x + 290, item.y + 4, item.x + 310, item.y + 20);
                isTheSameUpsideDown(box);
                compare(box.height, Math.round(6 * pixels));
                verify(level(box.right - 1, box.top) - level(box.left, box.top) > 0.02);
            });
        }

        function test_aSlidersStopsAreRound() {
            everywhere(stops, {}, item => {
                const size = Math.round(4 * pixels);
                const box = Qt.rect(Math.round((item.x + 248) * pixels),
                                    Math.round((item.y + 10) * pixels), size, size);
                isMirrored(box);
                isTheSameUpsideDown(box);
                const middle = Math.floor(size / 2);
                verify(level(box.x + middle, box.y + middle) > level(box.x, box.y) + 0.05);
            });
        }
    }
}
