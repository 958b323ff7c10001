pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Testing

// What the sheets look like, at whatever number of pixels a point has. Places are in points.
Item {
    id: root

    width: 980
    height: 660

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    SheetCase {
        name: "SheetPictures"

        property Item ground: null // of the sheet on show

        function shownKit(state) {
            const item = made(state);
            raise(item, item.kit);
            ground = item.kit.background;
            return item;
        }

        function shownAccess() {
            const item = made("access");
            raise(item, item.access);
            ground = item.access.background;
            return item;
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
            return Colours.part(Colours.ground, down(ground, place.y));
        }

        function amberAt(item, y) {
            return Colours.part(Colours.amberFade, down(item, y));
        }

        // How many pixels of an item a rule holds for.
        function count(item, holds) {
            const scale = Screen.devicePixelRatio;
            const place = item.mapToItem(root, 0, 0);
            let found = 0;
            for (let x = 0; x < item.width * scale; ++x) {
                for (let y = 0; y < item.height * scale; ++y) {
                    found += holds(Eye.pixel(Math.floor(place.x * scale) + x,
                                             Math.floor(place.y * scale) + y)) ? 1 : 0;
                }
            }
            return found;
        }

        // How many have a colour.
        function countPure(item, wanted) {
            return count(item, pixel => Colours.near(pixel, wanted));
        }

        // The same for what is too thin to show its colour pure: at least half of it over a ground.
        function countThin(item, below, wanted) {
            return count(item, pixel => {
                const share = (pixel.g - below[1]) / (wanted[1] - below[1]);
                const mix = Colours.between(below, wanted, share);
                return share > 0.5 && Math.abs(pixel.r - mix[0]) < 0.05
                    && Math.abs(pixel.b - mix[2]) < 0.05;
            });
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
                    looks(ground, x, y, groundAt(ground, y), "ground at %1, %2".arg(x).arg(y));
                }
            }
        }

        function test_whatIsBehindIsDimmed() {
            shownKit();
            for (const [x, y] of [[3, 3], [976, 3], [3, 656], [976, 656], [490, 20]]) {
                looks(root, x, y, Colours.over(0.2, 0, 0.45));
            }
        }

        function test_aStepsDiscIsAmberFromTopToBottom() {
            const item = shownAccess();
            for (const number of [1, 2, 3]) {
                const disc = part(part(item.access, "step" + number), "disc");
                for (const y of [7, 11, 15]) {
                    looks(disc, 3, y, amberAt(disc, y), "disc %1 at %2".arg(number).arg(y));
                    looks(disc, 19, y, amberAt(disc, y), "disc %1 at %2".arg(number).arg(y));
                }
                // 22 by 22: it touches its edges, and not its corners.
                for (const [x, y] of [[11, 1.5], [11, 20.5], [1.5, 11], [20.5, 11]]) {
                    looks(disc, x, y, amberAt(disc, y), "edge of disc %1".arg(number));
                }
                for (const [x, y] of [[1, 1], [21, 1], [-1.5, 11], [23.5, 11], [1, 21]]) {
                    looks(disc, x, y, groundAt(disc, y), "outside of disc %1".arg(number));
                }
                verify(countPure(disc, Colours.ink) > 3, "numeral " + number);
            }
        }

        function test_theWellIsADarkRound() {
            const item = shownAccess();
            const well = part(item.access, "well");
            compare(well.width, well.height);
            for (const [x, y] of [[4, well.height / 2], [well.width / 2, 5]]) {
                looks(well, x, y, Colours.over(groundAt(well, y), 0.03, 0.25), "well");
            }
            verify(countPure(well, Colours.amber) > 10); // the open lock
        }

        function test_thePrimaryButtonIsAmber() {
            const item = shownAccess();
            const button = part(item.access, "settings");
            for (const y of [6, button.height / 2, button.height - 6]) {
                looks(button, 12, y, amberAt(button, y), "primary at " + y);
            }
            verify(countPure(button, Colours.ink) > 20); // its label in ink
        }

        function test_anOutlinedButtonIsAThinWhite() {
            const item = shownAccess();
            const button = part(item.access, "without");
            for (const y of [8, button.height / 2, button.height - 8]) {
                looks(button, 11, y, Colours.over(groundAt(button, y), 1, 0.1), "outline at " + y);
            }
        }

        function test_untilConfirmedContinueIsFaint() {
            const item = shownKit();
            const button = part(item.kit, "last");
            const y = button.height / 2;
            looks(button, 12, y, Colours.over(groundAt(button, y), amberAt(button, y), 0.38),
                  "disabled");
            item.kit.confirmed = true;
            settle();
            looks(button, 12, y, amberAt(button, y), "enabled");
        }

        function test_theBoxFillsWithAmber() {
            const item = shownKit();
            const box = part(item.kit, "box");
            compare(box.width, 17);
            compare(box.height, 17);
            looks(box, 8.5, 8.5, Colours.over(groundAt(box, 8.5), 0, 0.22), "off");
            item.kit.confirmed = true;
            settle();
            looks(box, 2.5, 8.5, amberAt(box, 8.5), "on");
            verify(countThin(box, amberAt(box, 8.5), Colours.ink) > 3); // the check mark
        }

        function test_wordsHaveTheirColours_data() {
            return [
                {tag: "well", warning: false, color: Colours.mint},
                {tag: "warning", warning: true, color: Colours.coral}
            ];
        }
        function test_wordsHaveTheirColours(data) {
            const item = shownKit();
            item.prepared.setKitNotice("Kit salvato in /Volumes/Chiavetta/kit.txt", data.warning);
            item.prepared.setKeyError("Il portachiavi è bloccato");
            settle();
            const notice = part(item.kit, "notice");
            const sign = part(notice, "sign");
            verify(countThin(sign, groundAt(sign, sign.height / 2), data.color) > 3);
            const isWritten = (words, color) => verify(
                countThin(words, groundAt(words, words.height / 2), color) > 20);
            isWritten(part(notice, "words"), data.color);
            isWritten(part(part(item.kit, "error"), "words"), Colours.coral);
        }

        function test_theCrossIsARoundOf28() {
            const item = shownKit();
            const cross = part(item.kit, "cross");
            compare(cross.width, 28);
            compare(cross.height, 28);
            compare(cross.mapToItem(ground, 28, 0).x, 480 - 26);
            looks(cross, 4, 14, Colours.over(groundAt(cross, 14), 1, 0.08), "cross");
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
                    looks(ground, x, y, groundAt(ground, y), "margin at %1, %2".arg(x).arg(y));
                }
            }
            compare(sheet.scrolling.contentY, 0);
        }
    }
}
