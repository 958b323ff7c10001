import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

Item {
    id: root

    width: 700
    height: 400

    Component {
        id: toggle
        Switch { x: 50; y: 50; text: "Backup automatico" }
    }

    Component {
        id: box
        CheckBox { x: 50; y: 50; text: "Confermo" }
    }

    Component {
        id: row
        CheckRow { x: 50; y: 50; width: 300; text: "Confermo"; checked: false }
    }

    Component {
        id: segments
        Segmented {
            x: 50
            y: 50
            name: "Licenza"
            options: ["uno", "due", "tre"].map((label, i) => ({value: i * 10, label: label}))
            selection: 10
        }
    }

    Component {
        id: stops
        StopSlider {
            x: 50
            y: 50
            width: 500
            name: "Conserva"
            options: ["a", "b", "c", "d", "e"].map((label, i) => ({value: i * 10, label: label}))
            selection: 20
        }
    }

    SignalSpy {
        id: asked
        signalName: "asked"
    }

    SignalSpy {
        id: choices
        signalName: "chosen"
    }

    Case {
        name: "Choices"

        function made(component, properties, spy) {
            const item = drawn(component, properties);
            spy.target = item;
            spy.clear();
            return item;
        }

        function checkables() {
            return [{tag: "switch", component: toggle}, {tag: "box", component: box}];
        }

        function test_aPressAsksForTheOtherState_data() { return checkables(); }
        function test_aPressAsksForTheOtherState(data) {
            const control = made(data.component, {}, asked);
            control.asked.connect(checked => control.checked = checked);
            mouseClick(control);
            verify(control.checked);
            compare(asked.count, 1);
            control.forceActiveFocus(Qt.TabFocusReason);
            verify(control.ringed);
            let expected = true;
            for (const key of [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter]) {
                expected = !expected;
                keyClick(key);
                compare(control.checked, expected);
            }
            compare(asked.signalArguments.map(list => list[0]), [true, false, true, false]);
        }

        function test_whatTheModelRefusesIsNotShown_data() { return checkables(); }
        function test_whatTheModelRefusesIsNotShown(data) {
            for (const before of [false, true]) {
                const control = made(data.component, {checked: before}, asked);
                const changes = [];
                control.checkedChanged.connect(() => changes.push(control.checked));
                mouseClick(control);
                control.forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Space);
                keyClick(Qt.Key_Return);
                ScreenReader.perform(control, "Toggle");
                compare(asked.signalArguments.map(list => list[0]),
                        [!before, !before, !before, !before]);
                compare(changes, []); // not even for a moment
                compare(control.checked, before);
                compare(ScreenReader.checked(control), before);
                control.destroy();
            }
        }

        function test_aPressLeavesTheBindingInPlace_data() { return checkables(); }
        function test_aPressLeavesTheBindingInPlace(data) {
            const control = made(data.component, {checked: Qt.binding(() => state.on)}, asked);
            for (const on of [true, false, true]) {
                mouseClick(control);
                state.on = on;
                compare(control.checked, on);
                compare(ScreenReader.checked(control), on);
            }
            state.on = false;
        }

        function test_disabledStaysAsItIs_data() { return checkables(); }
        function test_disabledStaysAsItIs(data) {
            const control = made(data.component, {enabled: false}, asked);
            mouseClick(control);
            ScreenReader.perform(control, "Press");
            ScreenReader.perform(control, "Toggle");
            verify(!control.checked);
            compare(asked.count, 0);
            fuzzyCompare(control.opacity, 0.38, 1e-6);
        }

        function test_theScreenReaderSeesAndToggles_data() {
            return [{tag: "switch", component: toggle, name: "Backup automatico"},
                {tag: "box", component: box, name: "Confermo"}];
        }
        function test_theScreenReaderSeesAndToggles(data) {
            const control = made(data.component, {}, asked);
            control.asked.connect(checked => control.checked = checked);
            compare(ScreenReader.role(control), Accessible.CheckBox);
            compare(ScreenReader.name(control), data.name);
            verify(!ScreenReader.checked(control));
            ScreenReader.perform(control, "Toggle");
            verify(control.checked);
            verify(ScreenReader.checked(control));
            compare(asked.count, 1);
        }

        function test_aRowAsksWhereverItIsClickedAndShowsWhatItIsToldTo() {
            const control = made(row, {}, asked);
            for (const name of ["box", "words"]) {
                mouseClick(findChild(control, name));
            }
            compare(asked.signalArguments.map(list => list[0]), [true, true]);
            verify(!findChild(control, "box").checked);
            control.checked = true;
            verify(findChild(control, "box").checked);
            mouseClick(control, control.width - 2, control.height - 2);
            compare(asked.signalArguments[2][0], false);
        }

        function test_theKnobRestsAtItsEnds() {
            const control = made(toggle, {}, asked);
            compare(control.width, 44);
            compare(control.height, 25);
            const knob = findChild(control, "knob");
            compare(knob.width, 19);
            compare(knob.y, 3);
            compare(knob.x, 3);
            control.checked = true;
            tryCompare(knob, "x", 44 - 3 - 19);
        }

        function test_aBoxIsASquareOf17() {
            const control = made(box, {}, asked);
            compare(control.width, 17);
            compare(control.height, 17);
        }

        function test_aSegmentIsAskedForByMouse() {
            const control = made(segments, {}, choices);
            mouseClick(control.contentItem.children[2]);
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], 20);
            compare(control.selection, 10); // whoever uses it decides
            mouseClick(control.contentItem.children[1]);
            compare(choices.count, 1); // it is the selected one already
        }

        function test_arrowsMoveTheSelectionWithinItsEnds() {
            const control = made(segments, {}, choices);
            control.chosen.connect(value => control.selection = value);
            control.contentItem.children[1].forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Right);
            compare(control.selection, 20);
            verify(control.contentItem.children[2].activeFocus);
            verify(control.contentItem.children[2].ringed);
            keyClick(Qt.Key_Right);
            compare(control.selection, 20);
            keyClick(Qt.Key_Left);
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Left);
            compare(control.selection, 0);
        }

        function test_onlyTheSelectedSegmentIsInTheTabChain() {
            const control = made(segments, {}, choices);
            compare([0, 1, 2].map(i => control.contentItem.children[i].activeFocusOnTab),
                    [false, true, false]);
            control.selection = "none of them";
            compare([0, 1, 2].map(i => control.contentItem.children[i].activeFocusOnTab),
                    [true, false, false]);
        }

        function test_segmentsHaveTheirRoom() {
            const control = made(segments, {}, choices);
            const first = control.contentItem.children[0];
            compare(first.x, 0);
            compare(control.contentItem.x, 3);
            compare(control.contentItem.y, 3);
            compare(control.contentItem.children[1].x, first.width + 2);
            compare(first.width, first.contentItem.implicitWidth + 24);
            compare(first.height, first.contentItem.implicitHeight + 12);
            compare(control.height, first.height + 6);
        }

        function test_theScreenReaderHearsOfEachSegment() {
            const control = made(segments, {}, choices);
            compare(ScreenReader.role(control), Accessible.Grouping);
            compare(ScreenReader.name(control), "Licenza");
            const option = control.contentItem.children[2];
            compare(ScreenReader.role(option), Accessible.RadioButton);
            compare(ScreenReader.name(option), "tre");
            verify(!ScreenReader.checked(option));
            verify(ScreenReader.checked(control.contentItem.children[1]));
            ScreenReader.perform(option, "Press");
            compare(choices.count, 1);
        }

        function test_aStopIsTheOneUnderThePointer_data() {
            return [{x: 0, value: 0}, {x: 99, value: 0}, {x: 100, value: 10}, {x: 301, value: 30},
                {x: 499, value: 40}];
        }
        function test_aStopIsTheOneUnderThePointer(data) {
            const slider = made(stops, {}, choices);
            mouseClick(findChild(slider, "track"), data.x, 12);
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], data.value);
        }

        function test_theCurrentStopIsNotSetAgain() {
            const slider = made(stops, {}, choices);
            mouseClick(findChild(slider, "track"), 250, 12);
            compare(choices.count, 0);
        }

        function test_aDragBeyondTheEndsStaysAtTheEnds() {
            const slider = made(stops, {}, choices);
            slider.chosen.connect(value => slider.selection = value);
            const track = findChild(slider, "track");
            mousePress(track, 250, 12);
            mouseMove(track, 640, 12);
            compare(slider.selection, 40);
            mouseMove(track, 350, 12);
            compare(slider.selection, 30);
            mouseMove(track, -40, 12);
            compare(slider.selection, 0);
            mouseRelease(track, -40, 12);
            compare(choices.count, 3);
            compare(slider.stopAt(-1e9), 0);
            compare(slider.stopAt(1e9), 4);
        }

        function test_aSelectionThatIsNoOptionStandsAtTheFirstStopUntilUsed() {
            const slider = made(stops, {selection: "something else"}, choices);
            compare(slider.index, 0);
            compare(choices.count, 0);
            compare(slider.selection, "something else");
            mouseClick(findChild(slider, "track"), 50, 12);
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], 0);
        }

        function test_theThumbStandsInTheMiddleOfItsStep() {
            const slider = made(stops, {}, choices);
            const thumb = findChild(slider, "thumb");
            compare(thumb.x + 11, 250);
            compare(thumb.width, 22);
            compare(findChild(slider, "passed").width, 250);
            slider.selection = 40;
            tryCompare(thumb, "x", 450 - 11);
        }

        function test_keysMoveByOneStop() {
            const slider = made(stops, {}, choices);
            slider.chosen.connect(value => slider.selection = value);
            slider.forceActiveFocus(Qt.TabFocusReason);
            verify(slider.ringed);
            const steps = [[Qt.Key_Right, 30], [Qt.Key_Up, 40], [Qt.Key_Right, 40],
                [Qt.Key_Left, 30], [Qt.Key_Down, 20], [Qt.Key_Home, 0], [Qt.Key_Left, 0],
                [Qt.Key_End, 40]];
            for (const [key, value] of steps) {
                keyClick(key);
                compare(slider.selection, value);
            }
        }

        function test_aLabelSelectsItsStop() {
            const slider = made(stops, {}, choices);
            mouseClick(slider, 450, slider.height - 5);
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], 40);
        }

        function test_theScreenReaderMovesTheSlider() {
            const slider = made(stops, {}, choices);
            slider.chosen.connect(value => slider.selection = value);
            compare(ScreenReader.role(slider), Accessible.Slider);
            compare(ScreenReader.name(slider), "Conserva: c");
            compare(ScreenReader.value(slider), 2);
            ScreenReader.perform(slider, "Increase");
            compare(slider.selection, 30);
            compare(ScreenReader.value(slider), 3);
            ScreenReader.perform(slider, "Decrease");
            compare(slider.selection, 20);
        }

        function test_aDisabledSliderCannotBeMoved() {
            const slider = made(stops, {enabled: false}, choices);
            mouseClick(findChild(slider, "track"), 450, 12);
            ScreenReader.perform(slider, "Increase");
            compare(choices.count, 0);
            fuzzyCompare(slider.opacity, 0.38, 1e-6);
        }

        function numbered(count) {
            return Array.from({length: count}, (_, i) => ({value: i * 10, label: "n" + i}));
        }

        function test_optionsThatComeAfterTheSelectionAskForNothing() {
            const slider = made(stops, {options: []}, choices);
            slider.selection = 40;
            slider.options = numbered(5);
            compare(choices.count, 0);
            compare(slider.index, 4);
            compare(slider.value, 4);
            compare(slider.selection, 40);
            compare(ScreenReader.name(slider), "Conserva: n4");
            ScreenReader.perform(slider, "Decrease");
            compare(choices.count, 1);
            compare(choices.signalArguments[0][0], 30);
        }

        function test_optionsThatShrinkAskForNothing_data() {
            return [{tag: "2"}, {tag: "1"}, {tag: "0"}];
        }
        function test_optionsThatShrinkAskForNothing(data) {
            const slider = made(stops, {selection: 40}, choices);
            slider.options = numbered(Number(data.tag));
            compare(choices.count, 0);
            compare(slider.index, 0);
            compare(slider.value, 0);
            compare(slider.selection, 40);
            slider.options = numbered(5);
            compare(choices.count, 0);
            compare(slider.value, 4);
        }

        function test_optionsInAnotherOrderMoveTheSliderAndAskForNothing() {
            const slider = made(stops, {selection: 40}, choices);
            slider.options = numbered(5).reverse();
            compare(choices.count, 0);
            compare(slider.value, 0);
            compare(ScreenReader.value(slider), 0);
        }

        function test_aSliderWithoutOptionsDoesNotFail() {
            const slider = made(stops, {options: []}, choices);
            mouseClick(slider, 100, 12);
            compare(choices.count, 0);
        }
    }

    QtObject {
        id: state
        property bool on: false
    }
}
