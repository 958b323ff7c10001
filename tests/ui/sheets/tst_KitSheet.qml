pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Sheets
import Vellomar.Testing
import "Finding.js" as Finding

Item {
    id: root

    width: 980
    height: 660

    readonly property string explanation: "I backup sono cifrati con questa chiave. Se il Mac si rompe o viene rubato, senza la chiave non si recupera nulla."
    readonly property string sentence: "Ho messo la chiave in un posto sicuro, fuori da questo Mac"

    Component {
        id: scene

        Item {
            readonly property alias prepared: prepared
            readonly property AppModel model: prepared.model
            readonly property alias sheet: sheet
            property alias state: prepared.state

            function part(name) {
                return Finding.named(sheet.contentItem, name);
            }

            anchors.fill: parent

            PreparedModel { id: prepared; state: "kit" }
            RecoveryKitSheet { id: sheet; model: prepared.model }
        }
    }

    SheetCase {
        name: "KitSheet"
        scene: root

        function made(state) {
            const item = createTemporaryObject(scene, root, {state: state ?? "kit"});
            item.prepared.takeAsked();
            return item;
        }

        function shown(state) {
            const item = made(state);
            item.model.showingRecoveryKit = true;
            tryCompare(item.sheet, "opened", true);
            settle();
            return item;
        }

        function reopened(item) {
            item.model.showingRecoveryKit = true;
            tryCompare(item.sheet, "opened", true);
        }

        function test_showsTheseTextsInThisOrder() {
            const item = shown();
            compare(Finding.texts(item.sheet.contentItem),
                    ["Kit di recupero", "Da conservare fuori da questo Mac", root.explanation,
                        "Salva il kit", "Stampa", "Copia la chiave", root.sentence, "Continua"]);
        }

        function test_withTheKeySavedItAsksNothing() {
            const item = shown("well");
            compare(Finding.texts(item.sheet.contentItem),
                    ["Kit di recupero", "Da conservare fuori da questo Mac", root.explanation,
                        "Salva il kit", "Stampa", "Copia la chiave", "Chiudi"]);
            verify(item.part("last").enabled);
            compare(item.part("last").kind, PillButton.Kind.Outline);
        }

        function test_theThreeButtonsStandInARow() {
            const item = shown();
            const places = ["save", "print", "copy"].map(
                name => item.part(name).mapToItem(item.sheet.contentItem, 0, 0));
            compare(places[0].y, places[1].y);
            compare(places[1].y, places[2].y);
            verify(places[0].x < places[1].x && places[1].x < places[2].x);
            item.model.copyKey(); // its longest label
            settle();
            compare(item.part("copy").mapToItem(item.sheet.contentItem, 0, 0).y, places[0].y);
        }

        function test_theyAskTheModel_data() {
            const rows = [];
            for (const name of ["save", "print", "copy"]) {
                for (const {tag, way} of ways()) {
                    rows.push({tag: name + " by " + tag, name: name, way: way});
                }
            }
            return rows;
        }
        function test_theyAskTheModel(data) {
            const item = shown();
            press(item.part(data.name), data.way);
            compare(item.prepared.takeAsked(), [data.name]); // and no login
            verify(item.sheet.opened);
            verify(!item.model.config.keySaved);
        }

        function test_aCopiedKeyIsSaidToBeSoForAMinute() {
            const item = shown();
            const copy = item.part("copy");
            compare(copy.text, "Copia la chiave");
            mouseClick(copy);
            compare(copy.text, "Copiata per un minuto");
            compare(ScreenReader.name(copy), "Copiata per un minuto");
            mouseClick(copy); // once more gives it another minute
            compare(item.prepared.takeAsked(), ["copy", "copy"]);
        }

        function test_aNoticeHasItsSymbolAndColour_data() {
            return [
                {tag: "well", warning: false, symbol: "checkmark.circle", color: Theme.mint},
                {tag: "warning", warning: true, symbol: "exclamationmark.triangle",
                    color: Theme.coral}
            ];
        }
        function test_aNoticeHasItsSymbolAndColour(data) {
            const item = shown();
            const notice = item.part("notice");
            verify(!notice.visible);
            item.prepared.setKitNotice("Kit salvato in /Volumes/Chiavetta/kit.txt.", data.warning);
            verify(notice.visible);
            compare(Finding.named(notice, "words").words,
                    "Kit salvato in /Volumes/Chiavetta/kit.txt.");
            compare(Finding.named(notice, "words").color.toString(), data.color.toString());
            compare(Finding.named(notice, "sign").name, data.symbol);
            compare(Finding.named(notice, "sign").color.toString(), data.color.toString());
            verify(Finding.named(notice, "sign").visible);
            compare(ScreenReader.role(Finding.named(notice, "words")), Accessible.AlertMessage);
        }

        function test_anErrorOfTheKeyIsInCoral() {
            const item = shown();
            const error = item.part("error");
            verify(!error.visible);
            item.prepared.setKeyError("Il portachiavi è bloccato (errore 3).");
            verify(error.visible);
            compare(Finding.named(error, "words").words, "Il portachiavi è bloccato (errore 3).");
            compare(Finding.named(error, "words").color.toString(), Theme.coral.toString());
            verify(!Finding.named(error, "sign").visible);
        }

        function test_withoutAKeyNothingButClosingWorks() {
            const item = made("keyError");
            item.model.showingRecoveryKit = true;
            tryCompare(item.sheet, "opened", true);
            verify(item.part("cross").activeFocus);
            compare(Finding.named(item.part("error"), "words").words,
                    "Il portachiavi è bloccato (errore 3).");
            item.sheet.confirmed = true;
            for (const name of ["save", "print", "copy", "box", "last"]) {
                verify(!item.part(name).enabled, name);
                for (const {way} of ways()) {
                    press(item.part(name), way);
                }
            }
            mouseClick(item.part("confirmation"));
            compare(item.prepared.takeAsked(), []);
            verify(item.sheet.confirmed);
            verify(!item.model.config.keySaved);
            verify(item.sheet.opened);
            item.part("cross").forceActiveFocus();
            keyClick(Qt.Key_Escape);
            tryCompare(item.sheet, "visible", false);
        }

        function test_aKeyThatComesLateIsStillToBeSaved() {
            const item = shown("keyError");
            item.sheet.confirmed = true;
            item.state = "kit";
            for (const name of ["save", "print", "copy", "box"]) {
                verify(item.part(name).enabled, name);
            }
            verify(!item.sheet.confirmed);
            verify(!item.part("last").enabled);
        }

        function test_noticeAndErrorStandBetweenButtonsAndRow() {
            const item = shown();
            item.prepared.setKeyError("errore");
            item.prepared.setKitNotice("avviso", true);
            settle();
            compare(Finding.texts(item.sheet.contentItem).slice(3),
                    ["Salva il kit", "Stampa", "Copia la chiave", "avviso", "errore",
                        root.sentence, "Continua"]);
        }

        function test_continueNeedsTheCheckMark() {
            const item = shown();
            const last = item.part("last");
            compare(last.text, "Continua");
            compare(last.kind, PillButton.Kind.Primary);
            verify(!last.enabled);
            press(last, "mouse");
            press(last, "screen reader");
            verify(item.sheet.opened);
            verify(!item.model.config.keySaved);
            item.sheet.confirmed = true;
            verify(last.enabled);
        }

        function test_itGoesOnByMouseAndKeys_data() { return ways(); }
        function test_itGoesOnByMouseAndKeys(data) {
            const item = shown();
            item.sheet.confirmed = true;
            press(item.part("last"), data.way);
            tryCompare(item.sheet, "visible", false);
            verify(item.model.config.keySaved);
            verify(!item.model.showingRecoveryKit);
            compare(item.prepared.takeAsked(), []); // nothing waited
        }

        function test_theWholeRowTogglesIt_data() {
            return [{tag: "box", x: 8, y: 0.5}, {tag: "words", x: 150, y: 0.5},
                {tag: "far end", x: 425, y: 0.5}, {tag: "upper corner", x: 1, y: 0},
                {tag: "lower corner", x: 427, y: 1}];
        }
        function test_theWholeRowTogglesIt(data) {
            const item = shown();
            const row = item.part("confirmation");
            const box = item.part("box");
            for (const checked of [true, false, true]) {
                mouseClick(row, data.x, 1 + Math.floor((row.height - 2) * data.y));
                compare(item.sheet.confirmed, checked);
                compare(box.checked, checked);
                compare(item.part("last").enabled, checked);
            }
        }

        function test_aPressThatLeavesTheRowTogglesNothing() {
            const item = shown();
            const row = item.part("confirmation");
            mousePress(row, 100, 10);
            mouseMove(row, 100, -40);
            mouseRelease(row, 100, -40);
            verify(!item.sheet.confirmed);
        }

        function test_theBoxIsCheckedByKeysToo_data() { return ways(); }
        function test_theBoxIsCheckedByKeysToo(data) {
            const item = shown();
            press(item.part("box"), data.way);
            verify(item.sheet.confirmed);
            verify(ScreenReader.checked(item.part("box")));
            press(item.part("box"), data.way);
            verify(!item.sheet.confirmed);
            verify(!ScreenReader.checked(item.part("box")));
        }

        function test_eachOpeningStartsAfresh() {
            const item = shown();
            mouseClick(item.part("confirmation"));
            verify(item.sheet.confirmed);
            mouseClick(item.part("cross"));
            tryCompare(item.sheet, "visible", false);
            reopened(item);
            verify(!item.sheet.confirmed);
            verify(!item.part("box").checked);
            verify(!item.part("last").enabled);
        }

        function test_aWaitingBackupStartsAfterConfirmation() {
            const item = made();
            item.model.startBackup();
            tryCompare(item.sheet, "opened", true);
            compare(item.prepared.takeAsked(), []);
            mouseClick(item.part("confirmation"));
            mouseClick(item.part("last"));
            compare(item.prepared.takeAsked(), ["notify", "start"]);
            verify(item.model.launching);
            tryCompare(item.sheet, "visible", false);
        }

        function test_closedInsteadItDoesNotStart_data() {
            return ways().map(({tag, way}) => ({tag: "cross by " + tag, way: way}))
                .concat([{tag: "escape", way: "escape"}]);
        }
        function test_closedInsteadItDoesNotStart(data) {
            const item = made();
            item.model.startBackup();
            tryCompare(item.sheet, "opened", true);
            mouseClick(item.part("confirmation")); // a check mark alone says nothing yet
            if (data.way === "escape") {
                keyClick(Qt.Key_Escape);
            } else {
                press(item.part("cross"), data.way);
            }
            tryCompare(item.sheet, "visible", false);
            verify(!item.model.showingRecoveryKit);
            verify(!item.model.config.keySaved);
            verify(!item.model.busy);
            compare(item.prepared.takeAsked(), []);
        }

        function test_aLaterConfirmationStartsWhatWaited() {
            const item = made();
            item.model.startBackup();
            tryCompare(item.sheet, "opened", true);
            keyClick(Qt.Key_Escape);
            tryCompare(item.sheet, "visible", false);
            item.model.openRecoveryKit();
            tryCompare(item.sheet, "opened", true);
            mouseClick(item.part("confirmation"));
            mouseClick(item.part("last"));
            compare(item.prepared.takeAsked(), ["notify", "start"]);
        }

        function test_withTheKeySavedTheLastButtonCloses_data() { return ways(); }
        function test_withTheKeySavedTheLastButtonCloses(data) {
            const item = shown("well");
            press(item.part("last"), data.way);
            tryCompare(item.sheet, "visible", false);
            verify(!item.model.showingRecoveryKit);
            verify(item.model.config.keySaved);
            compare(item.prepared.takeAsked(), []);
        }

        function test_itFollowsTheModel() {
            const item = made();
            verify(!item.sheet.visible);
            for (let i = 0; i < 2; ++i) {
                item.model.openRecoveryKit();
                tryCompare(item.sheet, "opened", true);
                item.model.showingRecoveryKit = false;
                tryCompare(item.sheet, "visible", false);
            }
            compare(item.prepared.takeAsked(), []);
        }

        function test_calledBackWhileItFadesItStays() {
            Motion.still = false;
            const item = shown();
            item.model.showingRecoveryKit = false;
            verify(item.sheet.visible);
            item.model.showingRecoveryKit = true;
            tryCompare(item.sheet, "opened", true);
            tryCompare(item.sheet.background, "opacity", 1);
            verify(item.part("save").activeFocus);
            keyClick(Qt.Key_Escape);
            tryCompare(item.sheet, "visible", false);
        }

        function test_confirmedItFadesAwayAsItWas() {
            Motion.still = false;
            const item = shown();
            mouseClick(item.part("confirmation"));
            const height = item.sheet.height;
            mouseClick(item.part("last"));
            verify(item.model.config.keySaved);
            verify(item.sheet.visible);
            compare(item.part("last").text, "Continua");
            verify(item.part("confirmation").visible);
            compare(item.sheet.height, height);
            tryCompare(item.sheet, "visible", false);
            reopened(item);
            compare(item.part("last").text, "Chiudi");
            verify(!item.part("confirmation").visible);
        }

        function test_aKeySavedMeanwhileNeedsNoCheckMark() {
            const item = shown();
            const config = item.model.config;
            config.keySaved = true;
            item.model.config = config;
            verify(!item.part("confirmation").visible);
            compare(item.part("last").text, "Chiudi");
            verify(item.part("last").enabled);
            verify(item.sheet.opened);
        }

        function test_theScreenReaderFindsItWhole() {
            const item = shown();
            compare(ScreenReader.role(item.sheet.contentItem), Accessible.Dialog);
            compare(ScreenReader.name(item.sheet.contentItem), "Kit di recupero");
            for (const [name, text] of [["cross", "Chiudi"], ["save", "Salva il kit"],
                     ["print", "Stampa"], ["copy", "Copia la chiave"], ["last", "Continua"]]) {
                compare(ScreenReader.role(item.part(name)), Accessible.Button);
                compare(ScreenReader.name(item.part(name)), text);
            }
            compare(ScreenReader.role(item.part("box")), Accessible.CheckBox);
            compare(ScreenReader.name(item.part("box")), root.sentence);
            verify(!ScreenReader.checked(item.part("box")));
        }

        function test_thePointerOnTheCrossBringsUpItsHelp() {
            const item = shown();
            compare(item.part("cross").symbol, "xmark");
            verify(!Finding.texts(item.sheet.parent).includes("Chiudi"));
            mouseMove(item.part("cross"), 14, 14);
            tryVerify(() => Finding.texts(item.sheet.parent).includes("Chiudi"));
        }
    }
}
