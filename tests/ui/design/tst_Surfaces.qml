pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Testing

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

    Case {
        name: "Surfaces"

        function test_aPanelsGroundFadesDownwards() {
            drawn(raised);
            for (const row of [20, 50, 80]) {
                const opacity = 0.105 - 0.05 * (row + 0.5) / 100;
                looks(root, 200, 50 + row, Colours.over(0.2, 1, opacity));
            }
        }

        function test_itsRimCatchesTheLightAtTheTop() {
            drawn(raised);
            looks(root, 200, 50, Colours.over(Colours.over(0.2, 1, 0.105), 1, 0.24));
            looks(root, 200, 149, Colours.over(Colours.over(0.2, 1, 0.055), 1, 0.03));
        }

        function test_itsShadowFallsBelowAndNotInside() {
            drawn(raised);
            verify(Eye.at(root, 200, 153).r < 0.19);
            verify(Eye.at(root, 200, 153).r < Eye.at(root, 200, 46).r);
            looks(root, 200, 250, 0.2);
        }

        function test_liftedItIsBrighterAndItsShadowDeeper() {
            const item = drawn(raised);
            const before = Eye.at(root, 200, 165).r;
            item.lifted = true;
            Eye.look(root);
            looks(root, 200, 100, Colours.over(0.2, 1, 0.08 + 0.06 - 0.00025));
            verify(Eye.at(root, 200, 165).r < before);
            compare(item.shadowRadius, 18);
            compare(item.shadowOffset.y, 10);
        }

        function test_aWideSurfaceIsTheSameInEveryColumn() {
            drawn(raised, {width: 700});
            for (let x = 100; x < 700; x += 23) {
                compare(Eye.at(root, x, 100), Eye.at(root, 400, 100));
            }
            compare(Eye.at(root, 51, 55), Eye.at(root, 748, 55)); // its ends are mirror images
        }

        function test_aMeterAtNothingShowsOnlyItsTrack() {
            const item = drawn(meter, {fraction: 0});
            verify(!part(item, "filled").visible);
            looks(root, 150, 53, Colours.over(0.2, 0, 0.28));
        }

        function test_aMeterIsAsWideAsItsFraction_data() {
            return [{fraction: 0.001, width: 6}, {fraction: 0.5, width: 100},
                {fraction: 1, width: 200}, {fraction: 7, width: 200}];
        }
        function test_aMeterIsAsWideAsItsFraction(data) {
            const item = drawn(meter, {fraction: data.fraction});
            compare(part(item, "filled").width, data.width);
            compare(item.height, 6);
            compare(ScreenReader.role(item), Accessible.ProgressBar);
        }

        function test_aMeterOfNoNumberOrLessThanNothingIsEmpty() {
            for (const fraction of [-1, NaN]) {
                const item = drawn(meter, {fraction: fraction});
                verify(!part(item, "filled").visible);
            }
        }

        function test_aWellIsADarkRound() {
            const item = drawn(well);
            compare(item.width, 40);
            compare(item.height, 40);
            looks(root, 70, 62, Colours.over(0.2, 0.03, 0.25));
        }

        function test_aStatusDotShowsItsColourAndName() {
            const item = drawn(dot, {color: Theme.coral});
            looks(root, 53, Math.round(50 + item.height / 2), Colours.coral);
            compare(ScreenReader.name(item), "Collegato");
        }

        function test_aStatusThatGrowsIsNotCut() {
            const item = drawn(dot, {text: "Ok", color: Theme.mint});
            const words = part(item, "words");
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
            const ones = drawn(digits, {text: "1111"});
            const eights = drawn(digits, {text: "8888"});
            compare(ones.implicitWidth, eights.implicitWidth);
        }

        function test_unlessTheyAreNotToBeSteady() {
            const ones = drawn(digits, {text: "1111", steady: false});
            const eights = drawn(digits, {text: "8888", steady: false});
            verify(ones.implicitWidth < eights.implicitWidth);
        }

        function test_digitsShrinkAsFarAsAllowed() {
            const item = drawn(digits, {text: "88888888", minimumScale: 0.5});
            const row = item.children[0];
            item.width = item.implicitWidth;
            compare(row.scale, 1);
            item.width = item.implicitWidth * 0.7;
            fuzzyCompare(row.scale, 0.7, 0.001);
            item.width = item.implicitWidth * 0.2;
            compare(row.scale, 0.5);
        }

        function test_aMetricSaysWhatItMeasures() {
            compare(ScreenReader.name(drawn(metric)), "Versioni: 1.111");
        }

        function test_anEyebrowIsSmallSpacedCapitals() {
            const item = drawn(heading);
            compare(item.font.pixelSize, 11);
            compare(item.font.weight, Font.DemiBold);
            fuzzyCompare(item.font.letterSpacing, 1.3, 1 / 64); // what a font's lengths are counted in
            compare(item.font.capitalization, Font.AllUppercase);
            compare(ScreenReader.name(item), "Destinazioni");
        }

        function test_namesAreNeverTakenForMarkup() {
            const item = drawn(heading, {text: "<b>file</b>"});
            compare(item.textFormat, Text.PlainText);
        }

        function test_aPanelTakesTheWholeWidthAndPadsItsContent() {
            const item = drawn(panel);
            compare(item.width, root.width);
            const inside = part(item, "inside");
            const place = inside.mapToItem(item, 0, 0);
            compare(place.x, 18);
            compare(inside.width, root.width - 36);
            compare(item.height - place.y - inside.height, 18);
        }

        function test_aPageStandsAtTheLeadingSideAndIsAtMost860Wide() {
            const item = drawn(page);
            const inside = part(item, "inside");
            compare(inside.mapToItem(item, 0, 0).x, 36);
            compare(inside.width, 860);
            item.anchors.fill = undefined;
            item.width = 500;
            compare(inside.width, 428);
        }

        function test_aPageBringsIntoSightWhatTheKeyboardIsOn() {
            const item = drawn(page);
            compare(item.contentY, 0);
            const last = part(item, "last");
            last.forceActiveFocus(Qt.TabFocusReason);
            verify(item.contentY > 0);
            verify(last.mapToItem(item, 0, last.height).y <= item.height);
        }

        function test_aFieldTakesTextAndReportsItsName() {
            const item = drawn(field);
            compare(ScreenReader.name(item), "Server");
            compare(ScreenReader.role(item), Accessible.EditableText);
            compare(item.height, Math.ceil(item.contentHeight) + 16);
            compare(item.leftPadding, 11);
            mouseClick(item);
            verify(item.ringed);
            keyClick("a");
            compare(item.text, "a");
            Eye.look(root);
            looks(item, 150, Math.round(item.height / 2), Colours.over(0.2, 0, 0.22));
        }

        function test_aSecureFieldShowsNoLetter() {
            const item = drawn(secret);
            verify(item.displayText.indexOf("s") === -1);
            compare(item.displayText.length, 7);
            compare(ScreenReader.description(item), "Password");
            mouseClick(item);
            keyClick("x");
            compare(item.displayText.indexOf("x"), -1);
        }

        function test_childrenFlowWithinTheWidthThatTheyAreGiven() {
            const item = drawn(flow);
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
            const item = drawn(symbol, {points: 40, color: Theme.amber});
            for (const name of item.names) {
                item.name = name;
                Eye.look(root);
                let count = 0;
                for (let x = 0; x < item.width; ++x) {
                    for (let y = 0; y < item.height; ++y) {
                        count += Colours.near(Eye.at(item, x, y), Colours.amber) ? 1 : 0;
                    }
                }
                verify(count > 20, name);
            }
        }

        function test_anUnknownSymbolShowsNothingAndSaysSo() {
            const item = drawn(symbol, {points: 40});
            ignoreWarning("no symbol is named \"no such thing\"");
            item.name = "no such thing";
            Eye.look(root);
            looks(root, 70, 70, 0.2);
        }

        function test_ticksShineWhereTheyAreToldTo() {
            const item = drawn(ring, {count: 4, shines: index => index === 1});
            looks(root, 240, 149, Colours.amber); // to the right
            looks(root, 149, 60, Colours.over(0.2, 1, 0.17)); // the top
            item.shines = index => index === 0;
            Eye.look(root);
            looks(root, 149, 60, Colours.amber);
        }

        function test_aRingFollowsWhatItsRuleReads() {
            const item = drawn(ring, {count: 4});
            item.shines = Qt.binding(() => index => index < panelCount.value);
            compare(item.lit, [true, true, false, false]);
            panelCount.value = 3;
            compare(item.lit, [true, true, true, false]);
            panelCount.value = 2;
        }

        function test_aSheetHoldsTheKeyboardUntilEscapeClosesIt() {
            const behind = drawn(field);
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
