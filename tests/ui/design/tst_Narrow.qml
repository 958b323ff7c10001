pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// What has less width than it wants keeps within it. Run at several scales.
Item {
    id: root

    width: 700
    height: 700

    Component {
        id: segments
        Segmented {
            x: 50
            y: 50
            name: "Frequenza"
            options: ["1 h", "3 h", "Ogni sei ore", "Una volta al giorno"].map(
                (label, i) => ({value: i, label: label}))
            selection: 3
        }
    }

    Component {
        id: empty
        EmptyState {
            symbol: "clock.arrow.circlepath"
            title: "Nessun backup eseguito"
            text: "L'elenco si riempie dopo il primo backup, e ogni riga racconta com'è andata."
        }
    }

    Case {
        name: "Narrow"

        function options(item) {
            return [0, 1, 2, 3].map(i => item.contentItem.children[i]);
        }

        function test_segmentsWithEnoughRoomAreAsWideAsTheirLabelsNeed_data() {
            return [{tag: "just enough", more: 0}, {tag: "more", more: 100}];
        }
        function test_segmentsWithEnoughRoomAreAsWideAsTheirLabelsNeed(data) {
            const item = drawn(segments);
            item.width = item.implicitWidth + data.more;
            for (const option of options(item)) {
                compare(option.width, option.contentItem.implicitWidth + 24);
                verify(!option.contentItem.truncated);
            }
        }

        function test_narrowSegmentsKeepWithinTheirWidth_data() {
            return [0.9, 0.7, 0.5, 0.3, 0.1].map(part => ({tag: "" + part, part: part}));
        }
        function test_narrowSegmentsKeepWithinTheirWidth(data) {
            const item = drawn(segments);
            const wanted = item.implicitWidth;
            item.width = wanted * data.part;
            waitForRendering(root);
            compare(item.implicitWidth, wanted); // it still says what it wants
            const last = options(item)[3];
            fuzzyCompare(item.contentItem.x + last.x + last.width, item.width - 3, 0.01);
            for (const option of options(item)) {
                const label = option.contentItem;
                verify(label.width <= option.width);
                verify(label.truncated || label.width >= label.implicitWidth - 0.01);
            }
        }

        function test_theLongestSegmentsShrinkFirst() {
            const item = drawn(segments);
            const [one, three, six, day] = options(item);
            const before = [one, three, six].map(option => option.width);
            item.width = item.implicitWidth - (day.width - six.width) / 2;
            compare([one, three, six].map(option => option.width), before);
            verify(day.width > six.width);
            item.width = item.implicitWidth * 0.7;
            fuzzyCompare(six.width, day.width, 0.01);
            compare(one.width, before[0]);
        }

        function test_aSegmentGivesUpItsPaddingBeforeItsLabelIsCut() {
            const item = drawn(segments);
            const day = options(item)[3];
            item.width = item.implicitWidth - 10;
            verify(!day.contentItem.truncated);
            verify(day.leftPadding < 12 && day.leftPadding >= 5);
            item.width = item.implicitWidth - 30;
            verify(day.contentItem.truncated);
        }

        function test_segmentsFollowOptionsThatChange() {
            const item = drawn(segments);
            item.options = [{value: 3, label: "Una scritta molto più lunga di tutte le altre"}];
            waitForRendering(root);
            const only = item.contentItem.children[0];
            compare(only.width, only.contentItem.implicitWidth + 24);
            item.options = [];
            compare(item.implicitWidth, 6);
        }

        function test_anEmptyStateKeepsWithinItsWidth_data() {
            return [600, 420, 300, 200, 120, 60].map(width => ({tag: "" + width, width: width}));
        }
        function test_anEmptyStateKeepsWithinItsWidth(data) {
            const item = drawn(empty, {width: data.width});
            for (const name of ["title", "text"]) {
                const label = part(item, name);
                const left = label.mapToItem(item, 0, 0).x;
                verify(left >= 8 - 0.01, "%1 begins at %2".arg(name).arg(left));
                verify(left + label.width <= data.width - 8 + 0.01);
                verify(label.contentWidth <= label.width + 0.01);
            }
            const text = findChild(item, "text");
            compare(item.height - text.mapToItem(item, 0, text.height).y, 36); // none is cut off
        }

        function test_itsTextHasTheMostRoomThatThePaddingLeaves_data() {
            return [{tag: "wide", width: 600, room: 340}, {tag: "padded", width: 400, room: 328},
                {tag: "narrower", width: 300, room: 260}, {tag: "narrowest", width: 200, room: 184}];
        }
        function test_itsTextHasTheMostRoomThatThePaddingLeaves(data) {
            compare(findChild(drawn(empty, {width: data.width}), "text").room, data.room);
        }

        function test_anEmptyStateWithoutAWidthTakesWhatItsTextNeeds() {
            const item = drawn(empty);
            compare(item.width, 340 + 72);
            item.text = "Niente";
            verify(item.width < 340);
            compare(findChild(item, "title").lineCount, 1);
        }
    }
}
