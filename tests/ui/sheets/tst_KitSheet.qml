pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Testing

Item {
    id: root

    width: 980
    height: 660

    readonly property string explanation: "I backup sono cifrati con questa chiave. Se il Mac si rompe o viene rubato, senza la chiave non si recupera nulla."
    readonly property string sentence: "Ho messo la chiave in un posto sicuro, fuori da questo Mac"

    SheetCase {
        name: "KitSheet"

        function shown(state) {
            const item = made(state);
            raise(item, item.kit);
            return item;
        }

        function test_showsTheseTextsInThisOrder() {
            const item = shown();
            compare(texts(item.kit),
                    ["Kit di recupero", "Da conservare fuori da questo Mac", root.explanation,
                        "Salva il kit", "Stampa", "Copia la chiave", root.sentence, "Continua"]);
        }

        function test_withTheKeySavedItAsksNothing() {
            const item = shown("well");
            compare(texts(item.kit),
                    ["Kit di recupero", "Da conservare fuori da questo Mac", root.explanation,
                        "Salva il kit", "Stampa", "Copia la chiave", "Chiudi"]);
            verify(part(item.kit, "last").enabled);
            compare(part(item.kit, "last").kind, PillButton.Kind.Outline);
        }

        function test_theThreeButtonsStandInARow() {
            const item = shown();
            const places = ["save", "print", "copy"].map(
                name => part(item.kit, name).mapToItem(item.kit.contentItem, 0, 0));
            compare(places[0].y, places[1].y);
            compare(places[1].y, places[2].y);
            verify(places[0].x < places[1].x && places[1].x < places[2].x);
            item.model.copyKey(); // its longest label
            settle();
            compare(part(item.kit, "copy").mapToItem(item.kit.contentItem, 0, 0).y, places[0].y);
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
            press(part(item.kit, data.name), data.way);
            compare(item.prepared.takeAsked(), [data.name]); // and no login
            verify(item.kit.opened);
            verify(!item.model.config.keySaved);
        }

        function test_aCopiedKeyIsSaidToBeSoForAMinute() {
            const item = shown();
            const copy = part(item.kit, "copy");
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
            const notice = part(item.kit, "notice");
            verify(!notice.visible);
            item.prepared.setKitNotice("Kit salvato in /Volumes/Chiavetta/kit.txt.", data.warning);
            verify(notice.visible);
            compare(part(notice, "words").words,
                    "Kit salvato in /Volumes/Chiavetta/kit.txt.");
            compare(part(notice, "words").color.toString(), data.color.toString());
            compare(part(notice, "sign").name, data.symbol);
            compare(part(notice, "sign").color.toString(), data.color.toString());
            verify(part(notice, "sign").visible);
            compare(ScreenReader.role(part(notice, "words")), Accessible.AlertMessage);
        }

        function test_anErrorOfTheKeyIsInCoral() {
            const item = shown();
            const error = part(item.kit, "error");
            verify(!error.visible);
            item.prepared.setKeyError("Il portachiavi è bloccato (errore 3).");
            verify(error.visible);
            compare(part(error, "words").words, "Il portachiavi è bloccato (errore 3).");
            compare(part(error, "words").color.toString(), Theme.coral.toString());
            verify(!part(error, "sign").visible);
        }

        function test_withoutAKeyNothingButClosingWorks() {
            const item = made("keyError");
            item.model.kit.showing = true;
            tryCompare(item.kit, "opened", true);
            verify(part(item.kit, "cross").activeFocus);
            compare(part(part(item.kit, "error"), "words").words,
                    "Il portachiavi è bloccato (errore 3).");
            item.kit.confirmed = true;
            for (const name of ["save", "print", "copy", "box", "last"]) {
                verify(!part(item.kit, name).enabled, name);
                for (const {way} of ways()) {
                    press(part(item.kit, name), way);
                }
            }
            mouseClick(part(item.kit, "confirmation"));
            compare(item.prepared.takeAsked(), []);
            verify(item.kit.confirmed);
            verify(!item.model.config.keySaved);
            verify(item.kit.opened);
            part(item.kit, "cross").forceActiveFocus();
            keyClick(Qt.Key_Escape);
            tryCompare(item.kit, "visible", false);
        }

        function test_aKeyThatComesLateIsStillToBeSaved() {
            const item = shown("keyError");
            item.kit.confirmed = true;
            item.prepared.giveKey();
            for (const name of ["save", "print", "copy", "box"]) {
                verify(part(item.kit, name).enabled, name);
            }
            verify(!item.kit.confirmed);
            verify(!part(item.kit, "last").enabled);
        }

        function test_noticeAndErrorStandBetweenButtonsAndRow() {
            const item = shown();
            item.prepared.setKeyError("errore");
            item.prepared.setKitNotice("avviso", true);
            settle();
            compare(texts(item.kit).slice(3),
                    ["Salva il kit", "Stampa", "Copia la chiave", "avviso", "errore",
                        root.sentence, "Continua"]);
        }

        function test_continueNeedsTheCheckMark() {
            const item = shown();
            const last = part(item.kit, "last");
            compare(last.text, "Continua");
            compare(last.kind, PillButton.Kind.Primary);
            verify(!last.enabled);
            press(last, "mouse");
            press(last, "screen reader");
            verify(item.kit.opened);
            verify(!item.model.config.keySaved);
            item.kit.confirmed = true;
            verify(last.enabled);
        }

        function test_itGoesOnByMouseAndKeys_data() { return ways(); }
        function test_itGoesOnByMouseAndKeys(data) {
            const item = shown();
            item.kit.confirmed = true;
            press(part(item.kit, "last"), data.way);
            tryCompare(item.kit, "visible", false);
            verify(item.model.config.keySaved);
            verify(!item.model.kit.showing);
            compare(item.prepared.takeAsked(), []); // nothing waited
        }

        function test_theWholeRowTogglesIt_data() {
            return [{tag: "box", x: 8, y: 0.5}, {tag: "words", x: 150, y: 0.5},
                {tag: "far end", x: 425, y: 0.5}, {tag: "upper corner", x: 1, y: 0},
                {tag: "lower corner", x: 427, y: 1}];
        }
        function test_theWholeRowTogglesIt(data) {
            const item = shown();
            const row = part(item.kit, "confirmation");
            const box = part(item.kit, "box");
            for (const checked of [true, false, true]) {
                mouseClick(row, data.x, 1 + Math.floor((row.height - 2) * data.y));
                compare(item.kit.confirmed, checked);
                compare(box.checked, checked);
                compare(part(item.kit, "last").enabled, checked);
            }
        }

        function test_aPressThatLeavesTheRowTogglesNothing() {
            const item = shown();
            const row = part(item.kit, "confirmation");
            mousePress(row, 100, 10);
            mouseMove(row, 100, -40);
            mouseRelease(row, 100, -40);
            verify(!item.kit.confirmed);
        }

        function test_theBoxIsCheckedByKeysToo_data() { return ways(); }
        function test_theBoxIsCheckedByKeysToo(data) {
            const item = shown();
            press(part(item.kit, "box"), data.way);
            verify(item.kit.confirmed);
            verify(ScreenReader.checked(part(item.kit, "box")));
            press(part(item.kit, "box"), data.way);
            verify(!item.kit.confirmed);
            verify(!ScreenReader.checked(part(item.kit, "box")));
        }

        function test_eachOpeningStartsAfresh() {
            const item = shown();
            mouseClick(part(item.kit, "confirmation"));
            verify(item.kit.confirmed);
            mouseClick(part(item.kit, "cross"));
            tryCompare(item.kit, "visible", false);
            raise(item, item.kit);
            verify(!item.kit.confirmed);
            verify(!part(item.kit, "box").checked);
            verify(!part(item.kit, "last").enabled);
        }

        function test_aWaitingBackupStartsAfterConfirmation() {
            const item = made();
            item.model.startBackup();
            tryCompare(item.kit, "opened", true);
            compare(item.prepared.takeAsked(), []);
            mouseClick(part(item.kit, "confirmation"));
            mouseClick(part(item.kit, "last"));
            compare(item.prepared.takeAsked(), ["notify", "start"]);
            verify(item.model.run.launching);
            tryCompare(item.kit, "visible", false);
        }

        function test_closedInsteadItDoesNotStart_data() {
            return ways().map(({tag, way}) => ({tag: "cross by " + tag, way: way}))
                .concat([{tag: "escape", way: "escape"}]);
        }
        function test_closedInsteadItDoesNotStart(data) {
            const item = made();
            item.model.startBackup();
            tryCompare(item.kit, "opened", true);
            mouseClick(part(item.kit, "confirmation")); // a check mark alone says nothing yet
            if (data.way === "escape") {
                keyClick(Qt.Key_Escape);
            } else {
                press(part(item.kit, "cross"), data.way);
            }
            tryCompare(item.kit, "visible", false);
            verify(!item.model.kit.showing);
            verify(!item.model.config.keySaved);
            verify(!item.model.run.busy);
            compare(item.prepared.takeAsked(), []);
        }

        function test_returnGoesOnOnceTheKeyIsConfirmed() {
            const item = shown();
            item.forceActiveFocus(); // none of the sheet's controls has the focus
            keyClick(Qt.Key_Return);
            verify(!item.model.config.keySaved);
            mouseClick(part(item.kit, "confirmation"));
            keyClick(Qt.Key_Return);
            verify(item.model.config.keySaved);
            tryCompare(item.kit, "visible", false);
        }

        function test_aLaterConfirmationStartsWhatWaited() {
            const item = made();
            item.model.startBackup();
            tryCompare(item.kit, "opened", true);
            keyClick(Qt.Key_Escape);
            tryCompare(item.kit, "visible", false);
            item.model.openRecoveryKit();
            tryCompare(item.kit, "opened", true);
            mouseClick(part(item.kit, "confirmation"));
            mouseClick(part(item.kit, "last"));
            compare(item.prepared.takeAsked(), ["notify", "start"]);
        }

        function test_withTheKeySavedTheLastButtonCloses_data() { return ways(); }
        function test_withTheKeySavedTheLastButtonCloses(data) {
            const item = shown("well");
            press(part(item.kit, "last"), data.way);
            tryCompare(item.kit, "visible", false);
            verify(!item.model.kit.showing);
            verify(item.model.config.keySaved);
            compare(item.prepared.takeAsked(), []);
        }

        function test_itFollowsTheModel() {
            const item = made();
            verify(!item.kit.visible);
            for (let i = 0; i < 2; ++i) {
                item.model.openRecoveryKit();
                tryCompare(item.kit, "opened", true);
                item.model.kit.showing = false;
                tryCompare(item.kit, "visible", false);
            }
            compare(item.prepared.takeAsked(), []);
        }

        function test_calledBackWhileItFadesItStays() {
            Motion.still = false;
            const item = shown();
            item.model.kit.showing = false;
            verify(item.kit.visible);
            item.model.kit.showing = true;
            tryCompare(item.kit, "opened", true);
            tryCompare(item.kit.background, "opacity", 1);
            verify(part(item.kit, "save").activeFocus);
            keyClick(Qt.Key_Escape);
            tryCompare(item.kit, "visible", false);
        }

        function test_confirmedItFadesAwayAsItWas() {
            Motion.still = false;
            const item = shown();
            mouseClick(part(item.kit, "confirmation"));
            const height = item.kit.height;
            mouseClick(part(item.kit, "last"));
            verify(item.model.config.keySaved);
            verify(item.kit.visible);
            compare(part(item.kit, "last").text, "Continua");
            verify(part(item.kit, "confirmation").visible);
            compare(item.kit.height, height);
            tryCompare(item.kit, "visible", false);
            raise(item, item.kit);
            compare(part(item.kit, "last").text, "Chiudi");
            verify(!part(item.kit, "confirmation").visible);
        }

        function test_aKeySavedMeanwhileNeedsNoCheckMark() {
            const item = shown();
            const config = item.model.config;
            config.keySaved = true;
            item.model.config = config;
            verify(!part(item.kit, "confirmation").visible);
            compare(part(item.kit, "last").text, "Chiudi");
            verify(part(item.kit, "last").enabled);
            verify(item.kit.opened);
        }

        function test_theScreenReaderFindsItWhole() {
            const item = shown();
            compare(ScreenReader.role(item.kit.contentItem), Accessible.Dialog);
            compare(ScreenReader.name(item.kit.contentItem), "Kit di recupero");
            for (const [name, text] of [["cross", "Chiudi"], ["save", "Salva il kit"],
                     ["print", "Stampa"], ["copy", "Copia la chiave"], ["last", "Continua"]]) {
                compare(ScreenReader.role(part(item.kit, name)), Accessible.Button);
                compare(ScreenReader.name(part(item.kit, name)), text);
            }
            compare(ScreenReader.role(part(item.kit, "box")), Accessible.CheckBox);
            compare(ScreenReader.name(part(item.kit, "box")), root.sentence);
            verify(!ScreenReader.checked(part(item.kit, "box")));
        }

        function test_thePointerOnTheCrossBringsUpItsHelp() {
            const item = shown();
            compare(part(item.kit, "cross").symbol, "xmark");
            verify(!texts(item.kit.parent).includes("Chiudi"));
            mouseMove(part(item.kit, "cross"), 14, 14);
            tryVerify(() => texts(item.kit.parent).includes("Chiudi"));
        }
    }
}
