pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Window
import QtTest
import Vellomar.Design
import Vellomar.Glance
import "../design/Colours.js" as Colours
import "Finding.js" as Finding

// What the sheets look like, at whatever number of pixels a point has. Places are told in points.
Item {
    id: root

    width: 980
    height: 660

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    // As large as the window's picture in pixels: a picture is cut to the size of its item.
    Item {
        id: whole
        width: root.width * Screen.devicePixelRatio
        height: root.height * Screen.devicePixelRatio
    }

    Component { id: scene; SheetsScene {} }

    SheetCase {
        name: "SheetPictures"
        scene: root

        property var image: null
        property Item ground: null // of the sheet on show

        function shownKit(state) {
            const item = createTemporaryObject(scene, root, {state: state ?? "kit"});
            item.model.showingRecoveryKit = true;
            tryCompare(item.kit, "opened", true);
            look(item.kit);
            return item;
        }

        function shownAccess() {
            const item = createTemporaryObject(scene, root, {state: "access"});
            item.model.accessRequest = AppModel.GatedAction.Backup;
            tryCompare(item.access, "opened", true);
            look(item.access);
            return item;
        }

        function look(sheet) {
            settle();
            ground = sheet.background;
            image = grabImage(whole);
        }

        function pixel(x, y) {
            const scale = Screen.devicePixelRatio;
            return image.pixel(Math.floor(x * scale), Math.floor(y * scale));
        }

        function at(item, x, y) {
            const place = item.mapToItem(root, x, y);
            return pixel(place.x, place.y);
        }

        function mixed(from, to, part) {
            return from.map((channel, i) => channel + (to[i] - channel) * part);
        }

        // How far down an item the middle of the row of pixels is that holds a place.
        function down(item, y) {
            const scale = Screen.devicePixelRatio;
            const top = item.mapToItem(root, 0, 0).y;
            // It is drawn on whole pixels.
            return (Math.floor((top + y) * scale) + 0.5 - Math.round(top * scale))
                / Math.round(item.height * scale);
        }

        // The sheet's ground beside a place of an item.
        function groundAt(item, y) {
            const place = ground.mapFromItem(item, 0, y);
            return mixed([0.09, 0.29, 0.315], [0.045, 0.175, 0.195], down(ground, place.y));
        }

        function amberAt(item, y) {
            return mixed([1.0, 0.83, 0.44], [0.95, 0.66, 0.18], down(item, y));
        }

        function over(below, above, opacity) {
            return below.map((channel, i) => Colours.over(channel, above[i], opacity));
        }

        function is(found, wanted, what) {
            verify(Colours.near(found, wanted[0], wanted[1], wanted[2]),
                   "%1: %2 instead of %3".arg(what).arg([found.r, found.g, found.b]).arg(wanted));
        }

        // How many pixels of an item have a colour.
        function count(item, wanted) {
            const scale = Screen.devicePixelRatio;
            const place = item.mapToItem(root, 0, 0);
            let found = 0;
            for (let x = 0; x < item.width * scale; ++x) {
                for (let y = 0; y < item.height * scale; ++y) {
                    const here = image.pixel(Math.floor(place.x * scale) + x,
                                             Math.floor(place.y * scale) + y);
                    found += Colours.near(here, wanted[0], wanted[1], wanted[2]) ? 1 : 0;
                }
            }
            return found;
        }

        // The same for what is too thin to show its colour pure: at least half of it over a ground.
        function countThin(item, below, wanted) {
            const scale = Screen.devicePixelRatio;
            const place = item.mapToItem(root, 0, 0);
            let found = 0;
            for (let x = 0; x < item.width * scale; ++x) {
                for (let y = 0; y < item.height * scale; ++y) {
                    const here = image.pixel(Math.floor(place.x * scale) + x,
                                             Math.floor(place.y * scale) + y);
                    const share = (here.g - below[1]) / (wanted[1] - below[1]);
                    const mix = mixed(below, wanted, share);
                    found += share > 0.5 && Math.abs(here.r - mix[0]) < 0.05
                        && Math.abs(here.b - mix[2]) < 0.05 ? 1 : 0;
                }
            }
            return found;
        }

        function part(sheet, name) {
            return Finding.named(sheet.contentItem, name);
        }

        function test_aSheetStandsOnTheGroundsGradient_data() {
            return [{tag: "kit"}, {tag: "access"}];
        }
        function test_aSheetStandsOnTheGroundsGradient(data) {
            if (data.tag === "kit") {
                shownKit();
            } else {
                shownAccess();
            }
            compare(ground.width, 480);
            for (const y of [20, 90, ground.height / 2, ground.height - 90, ground.height - 20]) {
                for (const x of [12, ground.width - 12]) {
                    is(at(ground, x, y), groundAt(ground, y), "ground at %1, %2".arg(x).arg(y));
                }
            }
        }

        function test_whatIsBehindIsDimmed() {
            shownKit();
            for (const [x, y] of [[3, 3], [976, 3], [3, 656], [976, 656], [490, 20]]) {
                is(pixel(x, y), Array(3).fill(Colours.over(0.2, 0, 0.45)), "%1, %2".arg(x).arg(y));
            }
        }

        function test_aStepsDiscIsAmberFromTopToBottom() {
            const item = shownAccess();
            for (const number of [1, 2, 3]) {
                const disc = Finding.named(part(item.access, "step" + number), "disc");
                for (const y of [7, 11, 15]) {
                    is(at(disc, 3, y), amberAt(disc, y), "disc %1 at %2".arg(number).arg(y));
                    is(at(disc, 19, y), amberAt(disc, y), "disc %1 at %2".arg(number).arg(y));
                }
                // 22 by 22: it touches its edges, and not its corners.
                for (const [x, y] of [[11, 1.5], [11, 20.5], [1.5, 11], [20.5, 11]]) {
                    is(at(disc, x, y), amberAt(disc, y), "edge of disc %1".arg(number));
                }
                for (const [x, y] of [[1, 1], [21, 1], [-1.5, 11], [23.5, 11], [1, 21]]) {
                    is(at(disc, x, y), groundAt(disc, y), "outside of disc %1".arg(number));
                }
                verify(count(disc, [0.04, 0.13, 0.14]) > 3, "numeral " + number);
            }
        }

        function test_theWellIsADarkRound() {
            const item = shownAccess();
            const well = part(item.access, "well");
            compare(well.width, well.height);
            for (const [x, y] of [[4, well.height / 2], [well.width / 2, 5]]) {
                is(at(well, x, y), over(groundAt(well, y), [0.03, 0.03, 0.03], 0.25), "well");
            }
            verify(count(well, [0.98, 0.74, 0.26]) > 10); // the open lock
        }

        function test_thePrimaryButtonIsAmber() {
            const item = shownAccess();
            const button = part(item.access, "settings");
            for (const y of [6, button.height / 2, button.height - 6]) {
                is(at(button, 12, y), amberAt(button, y), "primary at " + y);
            }
            verify(count(button, [0.04, 0.13, 0.14]) > 20); // its label in ink
        }

        function test_anOutlinedButtonIsAThinWhite() {
            const item = shownAccess();
            const button = part(item.access, "without");
            for (const y of [8, button.height / 2, button.height - 8]) {
                is(at(button, 11, y), over(groundAt(button, y), [1, 1, 1], 0.1), "outline at " + y);
            }
        }

        function test_untilConfirmedContinueIsFaint() {
            const item = shownKit();
            const button = part(item.kit, "last");
            const y = button.height / 2;
            is(at(button, 12, y), over(groundAt(button, y), amberAt(button, y), 0.38), "disabled");
            item.kit.confirmed = true;
            look(item.kit);
            is(at(button, 12, y), amberAt(button, y), "enabled");
        }

        function test_theBoxFillsWithAmber() {
            const item = shownKit();
            const box = part(item.kit, "box");
            compare(box.width, 17);
            compare(box.height, 17);
            is(at(box, 8.5, 8.5), over(groundAt(box, 8.5), [0, 0, 0], 0.22), "off");
            item.kit.confirmed = true;
            look(item.kit);
            is(at(box, 2.5, 8.5), amberAt(box, 8.5), "on");
            verify(countThin(box, amberAt(box, 8.5), [0.04, 0.13, 0.14]) > 3); // the check mark
        }

        function test_wordsHaveTheirColours_data() {
            return [
                {tag: "well", warning: false, color: [0.47, 0.88, 0.69]},
                {tag: "warning", warning: true, color: [0.98, 0.5, 0.42]}
            ];
        }
        function test_wordsHaveTheirColours(data) {
            const item = shownKit();
            item.prepared.setKitNotice("Kit salvato in /Volumes/Chiavetta/kit.txt", data.warning);
            item.prepared.setKeyError("Il portachiavi è bloccato");
            look(item.kit);
            const notice = part(item.kit, "notice");
            const sign = Finding.named(notice, "sign");
            verify(countThin(sign, groundAt(sign, sign.height / 2), data.color) > 3);
            const isWritten = (words, color) => verify(
                countThin(words, groundAt(words, words.height / 2), color) > 20);
            isWritten(Finding.named(notice, "words"), data.color);
            isWritten(Finding.named(part(item.kit, "error"), "words"), [0.98, 0.5, 0.42]);
        }

        function test_theCrossIsARoundOf28() {
            const item = shownKit();
            const cross = part(item.kit, "cross");
            compare(cross.width, 28);
            compare(cross.height, 28);
            compare(cross.mapToItem(ground, 28, 0).x, 480 - 26);
            is(at(cross, 4, 14), over(groundAt(cross, 14), [1, 1, 1], 0.08), "cross");
        }

        function test_nothingLeavesTheSheet_data() {
            return [{tag: "kit"}, {tag: "long"}, {tag: "access"}];
        }
        function test_nothingLeavesTheSheet(data) {
            const item = data.tag === "access" ? shownAccess() : shownKit(data.tag);
            const sheet = data.tag === "access" ? item.access : item.kit;
            verify(ground.height <= root.height - 48);
            // The margin all around shows nothing but ground.
            for (let y = 16; y < ground.height - 16; y += 3) {
                for (const x of [16, 464]) {
                    is(at(ground, x, y), groundAt(ground, y), "margin at %1, %2".arg(x).arg(y));
                }
            }
            compare(sheet.scrolling.contentY, 0);
        }
    }
}
