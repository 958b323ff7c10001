pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing
import "Colours.js" as Colours

Item {
    id: root

    width: 1000
    height: 700

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    Component { id: raised; Raised { x: 50; y: 50; width: 300; height: 100 } }
    Component { id: meter; Meter { x: 50; y: 50; width: 200; name: "Spazio" } }
    Component { id: well; GlyphWell { x: 50; y: 50; size: 40 } }
    Component { id: dot; StatusDot { x: 50; y: 50; text: "Collegato" } }
    Component { id: metric; Metric { x: 50; y: 50; label: "Versioni"; value: "1.111" } }
    Component { id: digits; Digits { x: 50; y: 50 } }
    Component { id: heading; Eyebrow { text: "Destinazioni" } }
    Component { id: field; TextField { x: 50; y: 50; placeholderText: "Server" } }
    Component { id: secret; SecureField { x: 50; y: 50; name: "Password"; text: "segreto" } }
    Component { id: symbol; Symbol { x: 50; y: 50 } }
    Component { id: ring; TickRing { x: 50; y: 50; width: 200; height: 200; length: 0.2; thickness: 0.1 } }
    Component {
        id: panel
        Panel {
            title: "Protezione"
            Rectangle { objectName: "inside"; width: parent ? parent.width : 0; height: 40 }
        }
    }
    Component {
        id: page
        Page {
            anchors.fill: parent
            title: "Cartelle"
            subtitle: "Che cosa si salva"
            Rectangle { objectName: "inside"; width: parent ? parent.width : 0; height: 1500 }
            PillButton { objectName: "last"; text: "In fondo" }
        }
    }
    Component {
        id: flow
        FlowLayout {
            spacing: 8
            Repeater {
                model: [40, 50, 30, 20]
                Item {
                    required property int modelData
                    implicitWidth: modelData
                    implicitHeight: 10
                }
            }
        }
    }
    Component {
        id: sheet
        Sheet {
            name: "Kit di recupero"
            ordinaryWidth: 300
            onDismissed: close()
            PillButton { objectName: "button"; text: "Continua"; focus: true }
        }
    }

    TestCase {
        name: "Surfaces"
        when: windowShown

        function init() {
            failOnWarning(/.*/);
            Motion.still = true;
        }

        function made(component, properties) {
            const item = createTemporaryObject(component, root, properties ?? {});
            waitForRendering(root);
            return item;
        }

        function isGray(pixel, level) {
            verify(Colours.near(pixel, level, level, level),
                   "%1 %2 %3 instead of %4".arg(pixel.r).arg(pixel.g).arg(pixel.b).arg(level));
        }

        function test_aPanelsGroundFadesDownwards() {
            made(raised);
            const image = grabImage(root);
            for (const row of [20, 50, 80]) {
                const opacity = 0.105 - 0.05 * (row + 0.5) / 100;
                isGray(image.pixel(200, 50 + row), Colours.over(0.2, 1, opacity));
            }
        }

        function test_itsRimCatchesTheLightAtTheTop() {
            made(raised);
            const image = grabImage(root);
            isGray(image.pixel(200, 50), Colours.over(Colours.over(0.2, 1, 0.105), 1, 0.24));
            isGray(image.pixel(200, 149), Colours.over(Colours.over(0.2, 1, 0.055), 1, 0.03));
        }

        function test_itsShadowFallsBelowAndNotInside() {
            made(raised);
            const image = grabImage(root);
            verify(image.pixel(200, 153).r < 0.19);
            verify(image.pixel(200, 153).r < image.pixel(200, 46).r);
            isGray(image.pixel(200, 250), 0.2);
        }

        function test_liftedItIsBrighterAndItsShadowDeeper() {
            const item = made(raised);
            const before = grabImage(root);
            item.lifted = true;
            waitForRendering(item);
            const after = grabImage(root);
            isGray(after.pixel(200, 100), Colours.over(0.2, 1, 0.08 + 0.06 - 0.00025));
            verify(after.pixel(200, 165).r < before.pixel(200, 165).r);
            compare(item.shadowRadius, 18);
            compare(item.shadowOffset.y, 10);
        }

        function test_aWideSurfaceIsTheSameInEveryColumn() {
            made(raised, {width: 700});
            const image = grabImage(root);
            for (let x = 100; x < 700; x += 23) {
                compare(image.pixel(x, 100), image.pixel(400, 100));
            }
            compare(image.pixel(51, 55), image.pixel(748, 55)); // its ends are mirror images
        }

        function test_aMeterAtNothingShowsOnlyItsTrack() {
            const item = made(meter, {fraction: 0});
            verify(!findChild(item, "filled").visible);
            isGray(grabImage(root).pixel(150, 53), Colours.over(0.2, 0, 0.28));
        }

        function test_aMeterIsAsWideAsItsFraction_data() {
            return [{fraction: 0.001, width: 6}, {fraction: 0.5, width: 100},
                {fraction: 1, width: 200}, {fraction: 7, width: 200}];
        }
        function test_aMeterIsAsWideAsItsFraction(data) {
            const item = made(meter, {fraction: data.fraction});
            compare(findChild(item, "filled").width, data.width);
            compare(item.height, 6);
            compare(ScreenReader.role(item), Accessible.ProgressBar);
        }

        function test_aMeterOfNoNumberOrLessThanNothingIsEmpty() {
            for (const fraction of [-1, NaN]) {
                const item = made(meter, {fraction: fraction});
                verify(!findChild(item, "filled").visible);
            }
        }

        function test_aWellIsADarkRound() {
            const item = made(well);
            compare(item.width, 40);
            compare(item.height, 40);
            isGray(grabImage(root).pixel(70, 62), Colours.over(0.2, 0.03, 0.25));
        }

        function test_aStatusDotShowsItsColourAndName() {
            const item = made(dot, {color: Theme.coral});
            verify(Colours.near(grabImage(root).pixel(53, Math.round(50 + item.height / 2)), 0.98,
                                0.5, 0.42));
            compare(ScreenReader.name(item), "Collegato");
        }

        function test_aStatusThatGrowsIsNotCut() {
            const item = made(dot, {text: "Ok", color: Theme.mint});
            const words = findChild(item, "words");
            const before = item.width;
            item.text = "Ultimo backup non riuscito";
            verify(!words.truncated);
            fuzzyCompare(item.width, 14 + words.implicitWidth, 1e-6);
            item.text = "Ok";
            compare(item.width, before);
            item.width = 60;
            item.text = "Ultimo backup non riuscito";
            verify(words.truncated);
            compare(words.width, 46);
        }

        function test_digitsAllTakeTheSameRoom() {
            const ones = made(digits, {text: "1111"});
            const eights = made(digits, {text: "8888"});
            compare(ones.implicitWidth, eights.implicitWidth);
        }

        function test_unlessTheyAreNotToBeSteady() {
            const ones = made(digits, {text: "1111", steady: false});
            const eights = made(digits, {text: "8888", steady: false});
            verify(ones.implicitWidth < eights.implicitWidth);
        }

        function test_digitsShrinkAsFarAsAllowed() {
            const item = made(digits, {text: "88888888", minimumScale: 0.5});
            const row = item.children[0];
            item.width = item.implicitWidth;
            compare(row.scale, 1);
            item.width = item.implicitWidth * 0.7;
            fuzzyCompare(row.scale, 0.7, 0.001);
            item.width = item.implicitWidth * 0.2;
            compare(row.scale, 0.5);
        }

        function test_aMetricSaysWhatItMeasures() {
            compare(ScreenReader.name(made(metric)), "Versioni: 1.111");
        }

        function test_anEyebrowIsSmallSpacedCapitals() {
            const item = made(heading);
            compare(item.font.pixelSize, 11);
            compare(item.font.weight, Font.DemiBold);
            fuzzyCompare(item.font.letterSpacing, 1.3, 1 / 64); // what a font's lengths are counted in
            compare(item.font.capitalization, Font.AllUppercase);
            compare(ScreenReader.name(item), "Destinazioni");
        }

        function test_namesAreNeverTakenForMarkup() {
            const item = made(heading, {text: "<b>file</b>"});
            compare(item.textFormat, Text.PlainText);
        }

        function test_aPanelTakesTheWholeWidthAndPadsItsContent() {
            const item = made(panel);
            compare(item.width, root.width);
            const inside = findChild(item, "inside");
            const place = inside.mapToItem(item, 0, 0);
            compare(place.x, 18);
            compare(inside.width, root.width - 36);
            compare(item.height - place.y - inside.height, 18);
        }

        function test_aPageStandsAtTheLeadingSideAndIsAtMost860Wide() {
            const item = made(page);
            const inside = findChild(item, "inside");
            compare(inside.mapToItem(item, 0, 0).x, 36);
            compare(inside.width, 860);
            item.anchors.fill = undefined;
            item.width = 500;
            compare(inside.width, 428);
        }

        function test_aPageBringsIntoSightWhatTheKeyboardIsOn() {
            const item = made(page);
            compare(item.scrolling.contentY, 0);
            const last = findChild(item, "last");
            last.forceActiveFocus(Qt.TabFocusReason);
            verify(item.scrolling.contentY > 0);
            verify(last.mapToItem(item, 0, last.height).y <= item.height);
        }

        function test_aFieldTakesTextAndTellsItsName() {
            const item = made(field);
            compare(ScreenReader.name(item), "Server");
            compare(ScreenReader.role(item), Accessible.EditableText);
            compare(item.height, Math.ceil(item.contentHeight) + 16);
            compare(item.leftPadding, 11);
            mouseClick(item);
            verify(item.ringed);
            keyClick("a");
            compare(item.text, "a");
            isGray(grabImage(root).pixel(200, 50 + Math.round(item.height / 2)),
                   Colours.over(0.2, 0, 0.22));
        }

        function test_aSecureFieldShowsNoLetter() {
            const item = made(secret);
            verify(item.displayText.indexOf("s") === -1);
            compare(item.displayText.length, 7);
            compare(ScreenReader.description(item), "Password");
            mouseClick(item);
            keyClick("x");
            compare(item.displayText.indexOf("x"), -1);
        }

        function test_childrenFlowWithinTheWidthThatTheyAreGiven() {
            const item = made(flow);
            compare(item.implicitWidth, 40 + 50 + 30 + 20 + 24);
            compare(item.implicitHeight, 10);
            item.width = 100;
            tryCompare(item, "implicitHeight", 28);
            compare(item.children[2].x, 0);
            compare(item.children[2].y, 18);
            item.children[0].visible = false;
            tryCompare(item.children[1], "x", 0);
            item.children[1].implicitWidth = 200;
            tryCompare(item.children[2], "y", 18);
            compare(item.children[1].width, 200);
        }

        function test_everySymbolDrawsSomethingInItsColour() {
            const item = made(symbol, {points: 40, color: Theme.amber});
            for (const name of item.names) {
                item.name = name;
                waitForRendering(item);
                const image = grabImage(item);
                let drawn = 0;
                for (let x = 0; x < item.width; ++x) {
                    for (let y = 0; y < item.height; ++y) {
                        drawn += Colours.near(image.pixel(x, y), 0.98, 0.74, 0.26) ? 1 : 0;
                    }
                }
                verify(drawn > 20, name);
            }
        }

        function test_anUnknownSymbolShowsNothingAndSaysSo() {
            const item = made(symbol, {points: 40});
            ignoreWarning("no symbol is named \"no such thing\"");
            item.name = "no such thing";
            waitForRendering(root);
            isGray(grabImage(root).pixel(70, 70), 0.2);
        }

        function test_ticksShineWhereTheyAreToldTo() {
            const item = made(ring, {count: 4, shines: index => index === 1});
            const image = grabImage(root);
            verify(Colours.near(image.pixel(240, 149), 0.98, 0.74, 0.26)); // to the right
            isGray(image.pixel(149, 60), Colours.over(0.2, 1, 0.17));      // the top
            item.shines = index => index === 0;
            waitForRendering(item);
            verify(Colours.near(grabImage(root).pixel(149, 60), 0.98, 0.74, 0.26));
        }

        function test_aRingFollowsWhatItsRuleReads() {
            const item = made(ring, {count: 4});
            item.shines = Qt.binding(() => index => index < panelCount.value);
            compare(item.lit, [true, true, false, false]);
            panelCount.value = 3;
            compare(item.lit, [true, true, true, false]);
            panelCount.value = 2;
        }

        function test_aSheetHoldsTheKeyboardUntilEscapeClosesIt() {
            const behind = made(field);
            behind.forceActiveFocus();
            const item = createTemporaryObject(sheet, root);
            item.open();
            tryCompare(item, "opened", true);
            verify(!behind.activeFocus);
            keyClick("a");
            compare(behind.text, "");
            keyClick(Qt.Key_Escape);
            tryCompare(item, "visible", false);
            compare(item.width, 300);
        }

        function test_escapeClosesASheetOfWhichNoControlHasTheKeyboard_data() {
            return [{tag: "there is none"}, {tag: "disabled from the start"},
                {tag: "disabled later"}, {tag: "hidden later"}];
        }
        function test_escapeClosesASheetOfWhichNoControlHasTheKeyboard(data) {
            const item = createTemporaryObject(sheet, root);
            const button = findChild(item.contentItem, "button");
            if (data.tag === "there is none") {
                button.destroy();
                wait(0);
            } else if (data.tag === "disabled from the start") {
                button.enabled = false;
                item.first = button;
            }
            item.open();
            tryCompare(item, "opened", true);
            if (data.tag === "disabled later") {
                button.forceActiveFocus();
                button.enabled = false;
            } else if (data.tag === "hidden later") {
                button.forceActiveFocus();
                button.visible = false;
            }
            keyClick(Qt.Key_Escape);
            tryCompare(item, "visible", false);
        }
    }

    QtObject {
        id: panelCount
        property int value: 2
    }
}
