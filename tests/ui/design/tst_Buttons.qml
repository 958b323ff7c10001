import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

Item {
    id: root

    width: 600
    height: 400

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    Component {
        id: pill
        PillButton { x: 100; y: 100; text: "Esegui backup" }
    }

    Component {
        id: icon
        IconButton { x: 100; y: 100; symbol: "xmark"; help: "Chiudi" }
    }

    SignalSpy {
        id: clicks
        signalName: "clicked"
    }

    Case {
        name: "Buttons"

        function made(component, properties) {
            const item = drawn(component, properties);
            clicks.target = item;
            clicks.clear();
            return item;
        }

        function test_aPillHasRoomAroundItsLabel() {
            const button = made(pill);
            compare(button.width, Math.ceil(button.contentItem.implicitWidth * 64) / 64 + 32
                    - (Math.ceil(button.contentItem.implicitWidth * 64) / 64
                       - button.contentItem.implicitWidth));
            compare(button.height, button.contentItem.implicitHeight + 16);
            compare(button.font.pixelSize, 13);
            compare(button.font.weight, Font.DemiBold);
        }

        function test_aLargePillIsAtLeast270Wide() {
            const button = made(pill, {large: true, text: "Ok"});
            compare(button.width, 270);
            compare(button.height, button.contentItem.implicitHeight + 30);
            compare(button.font.pixelSize, 16);
            const wide = made(pill, {large: true, text: "Una scritta che da sola è già più larga"});
            compare(wide.width, wide.contentItem.implicitWidth + 68);
        }

        function test_clickedByMouseAndKeys_data() {
            return [{tag: "pill", component: pill}, {tag: "icon", component: icon}];
        }
        function test_clickedByMouseAndKeys(data) {
            const button = made(data.component);
            mouseClick(button);
            compare(clicks.count, 1);
            button.forceActiveFocus(Qt.TabFocusReason);
            for (const key of [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter]) {
                clicks.clear();
                keyClick(key);
                compare(clicks.count, 1);
            }
        }

        function test_disabledDoesNothingAndLooksIt_data() {
            return [{tag: "pill", component: pill}, {tag: "icon", component: icon}];
        }
        function test_disabledDoesNothingAndLooksIt(data) {
            const button = made(data.component, {enabled: false});
            fuzzyCompare(button.opacity, 0.38, 1e-6);
            mouseClick(button);
            ScreenReader.perform(button, "Press");
            compare(clicks.count, 0);
            mouseMove(button, 5, 5);
            compare(button.scale, 1);
        }

        function test_theRingShowsForTheKeyboardOnly_data() {
            return [{tag: "pill", component: pill}, {tag: "icon", component: icon}];
        }
        function test_theRingShowsForTheKeyboardOnly(data) {
            const button = made(data.component);
            mouseClick(button);
            verify(!button.ringed);
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.ringed);
        }

        function test_hoverAndPressScale() {
            const button = made(pill);
            compare(button.scale, 1);
            mouseMove(button, 20, 10);
            tryCompare(button, "scale", 1.025);
            mousePress(button, 20, 10);
            tryCompare(button, "scale", 0.97);
            mouseRelease(button, 20, 10);
            tryCompare(button, "scale", 1.025);
            mouseMove(root, 1, 1);
            tryCompare(button, "scale", 1);
        }

        function test_primaryIsAmberFromTopToBottom() {
            const button = made(pill, {text: "", width: 120, height: 40});
            for (const share of [0.25, 0.5, 0.75]) {
                const mid = share + 0.5 / 40; // of that row of pixels
                looks(button, 60, 40 * share, Colours.part(Colours.amberFade, mid));
            }
        }

        function test_hoveredPrimaryIsBrighter() {
            const button = made(pill, {text: "", width: 120, height: 40, hovering: true});
            button.scale = 1;
            Eye.look(root);
            const amber = Colours.part(Colours.amberFade, 0.5 + 0.5 / 40);
            looks(button, 60, 20, amber.map(level => Math.min(1, level + 0.05)));
        }

        function test_outlineIsAThinWhite() {
            const button = made(pill, {text: "", width: 120, height: 40,
                                       kind: PillButton.Kind.Outline});
            looks(button, 60, 20, Colours.over(0.2, 1, 0.10));
        }

        function test_quietHasNoGroundUntilHovered() {
            const button = made(pill, {text: "", width: 120, height: 40,
                                       kind: PillButton.Kind.Quiet});
            looks(button, 60, 20, 0.2);
            button.hovering = true;
            Eye.look(root);
            looks(button, 60, 20, Colours.over(0.2, 1, 0.08));
        }

        function test_anIconButtonIsARoundOf28() {
            const button = made(icon);
            compare(button.width, 28);
            compare(button.height, 28);
            mouseMove(button, 14, 14);
            verify(button.hovering);
        }

        function test_theScreenReaderKnowsAndPressesThem() {
            const button = made(pill);
            compare(ScreenReader.role(button), Accessible.Button);
            compare(ScreenReader.name(button), "Esegui backup");
            ScreenReader.perform(button, "Press");
            compare(clicks.count, 1);
            const close = made(icon);
            compare(ScreenReader.role(close), Accessible.Button);
            compare(ScreenReader.name(close), "Chiudi");
            ScreenReader.perform(close, "Press");
            compare(clicks.count, 1);
        }
    }
}
