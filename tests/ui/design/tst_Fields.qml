pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// What may be typed and pasted into a field, and what a secure one lets out.
Item {
    id: root

    width: 600
    height: 300
    Accessible.role: Accessible.Pane
    Accessible.name: "Fields"

    Surface {
        anchors.fill: parent
        fill: Theme.groundGradient
    }

    Component {
        id: plain
        LabelledField { x: 20; y: 20; width: 300; label: "Indirizzo" }
    }

    Component {
        id: digits
        LabelledField { x: 20; y: 20; width: 300; label: "Porta"; digitsOnly: true }
    }

    Component {
        id: bound
        LabelledField {
            property string setting: ""

            x: 20
            y: 20
            width: 300
            label: "Password"
            secure: true
            text: setting
            onEdited: text => setting = text
        }
    }

    TextField {
        id: other

        x: 20
        y: 200
        name: "Appunti"
    }

    TextEdit {
        id: source
        visible: false
        textFormat: TextEdit.PlainText
    }

    SignalSpy {
        id: edits
        signalName: "edited"
    }

    Case {
        name: "Fields"

        function prepare() {
            edits.clear();
            other.text = "";
        }

        function made(component, properties) {
            const item = drawn(component, properties);
            edits.target = item;
            item.field.forceActiveFocus(Qt.TabFocusReason);
            return item;
        }

        // Has a text in the clipboard, also one that no field holds.
        function copy(text) {
            source.text = text;
            source.selectAll();
            source.copy();
        }

        // What is in the clipboard.
        function clipboard() {
            other.clear();
            other.paste();
            return other.text;
        }

        function test_lineBreaksNeverGetIntoAField_data() {
            return [
                {tag: "behind", pasted: "nas.example.org\n", text: "nas.example.org"},
                {tag: "within", pasted: "nas\nexample\r\norg", text: "nasexampleorg"},
                {tag: "alone", pasted: "\n\n", text: ""},
                {tag: "separators", pasted: "a\u2028b\u2029c\u0085d\ve\ff", text: "abcdef"},
                {tag: "tabs and blanks stay", pasted: " a\tb ", text: " a\tb "},
                {tag: "emoji and right-to-left", pasted: "🗄️שרת", text: "🗄️שרת"}];
        }
        function test_lineBreaksNeverGetIntoAField(data) {
            const item = made(plain);
            copy(data.pasted);
            item.field.paste();
            compare(item.text, data.text);
            compare(edits.count, 1);
            compare(edits.signalArguments[0][0], data.text);
        }

        function test_theCursorStaysBehindWhatWasPasted() {
            const item = made(plain, {text: "nas.org"});
            item.field.cursorPosition = 4;
            copy("exa\nmple.\n");
            item.field.paste();
            compare(item.text, "nas.example.org");
            compare(item.field.cursorPosition, 12);
        }

        function test_aVeryLongTextIsTakenWhole() {
            const item = made(plain);
            copy("x\n".repeat(10000));
            item.field.paste();
            compare(item.text, "x".repeat(10000));
            compare(edits.signalArguments[edits.count - 1][0].length, 10000);
            compare(item.field.width, 300);
        }

        function test_aFieldForDigitsTakesNoLetter() {
            const item = made(digits);
            for (const key of "2a-2 ") {
                keyClick(key);
            }
            compare(item.text, "22");
            item.field.clear();
            copy(" porta 8022\n");
            item.field.paste();
            compare(item.text, "8022");
            compare(edits.signalArguments[edits.count - 1][0], "8022");
        }

        function test_whatAFieldIsGivenStaysAsItIs() {
            const item = made(digits, {text: "ssh"});
            compare(item.text, "ssh");
        }

        function test_aFieldStaysBoundWhateverIsPasted() {
            const item = made(bound);
            copy("one\ntwo");
            item.field.paste();
            compare(item.setting, "onetwo");
            item.setting = "";
            compare(item.text, "");
            item.setting = "anew";
            compare(item.text, "anew");
        }

        function test_anEmptyFieldSaysWhatItsPlaceholderSays() {
            const item = made(plain, {placeholderText: "nas.example.org"});
            compare(ScreenReader.description(item.field), "nas.example.org");
            compare(ScreenReader.faults(root), []);
            item.text = "nas";
            compare(ScreenReader.description(item.field), "");
        }

        function test_anEyeIsInASecureFieldOnly() {
            verify(!part(made(plain), "eye").visible);
            const item = made(bound);
            const eye = part(item, "eye");
            verify(eye.visible);
            verify(!eye.enabled); // nothing to show
            item.setting = "segreto";
            verify(eye.enabled);
            compare(ScreenReader.name(eye), "Mostra: Password");
            compare(ScreenReader.faults(root), []);
        }

        function test_theEyeShowsWhatWasTypedWhileItIsHeld() {
            const item = made(bound, {setting: "segreto"});
            const eye = part(item, "eye");
            const revealed = part(item, "revealed");
            verify(!revealed.visible);
            mousePress(eye);
            verify(revealed.visible);
            compare(revealed.text, "segreto");
            mouseRelease(eye);
            verify(!revealed.visible);
            compare(revealed.text, "");
        }

        function test_theEyeLetsGoWhenThePointerLeavesIt() {
            const item = made(bound, {setting: "segreto"});
            const eye = part(item, "eye");
            mousePress(eye);
            verify(item.field.revealing);
            mouseMove(root, 5, 250);
            verify(!item.field.revealing);
            mouseRelease(root, 5, 250);
        }

        function test_theEyeIsHeldBySpace() {
            const item = made(bound, {setting: "segreto"});
            keyClick(Qt.Key_Tab);
            compare(focused(), part(item, "eye"));
            keyPress(Qt.Key_Space);
            verify(item.field.revealing);
            keyRelease(Qt.Key_Space);
            verify(!item.field.revealing);
            keyPress(Qt.Key_Space);
            keyClick(Qt.Key_Tab);
            verify(!item.field.revealing);
        }

        function test_theEyeClosesWhenTheTextGoes() {
            const item = made(bound, {setting: "segreto"});
            mousePress(part(item, "eye"));
            item.setting = "";
            verify(!item.field.revealing);
            mouseRelease(part(item, "eye"));
        }

        function test_whileTheEyeIsHeldTheFieldItselfGoesOnHidingIt() {
            const item = made(bound, {setting: "segreto"});
            copy("before");
            const heard = ScreenReader.tree(root);
            item.field.revealing = true;
            compare(item.field.displayText.indexOf("s"), -1);
            compare(ScreenReader.tree(root), heard);
            item.field.selectAll();
            item.field.copy();
            keyClick(Qt.Key_C, Qt.ControlModifier);
            keyClick(Qt.Key_X, Qt.ControlModifier);
            compare(clipboard(), "before");
        }

        function test_aLongSecretIsShownUpToTheCursor() {
            const item = made(bound, {setting: "abcdefgh".repeat(20)});
            const revealed = part(item, "revealed");
            item.field.revealing = true;
            item.field.cursorPosition = 160;
            fuzzyCompare(revealed.x + revealed.width, revealed.parent.width, 1.5);
            item.field.cursorPosition = 0;
            compare(revealed.x, 0);
        }

        function test_whatWasDeletedFromASecureFieldDoesntComeBack_data() {
            return [{tag: "deleted", way: "keys"}, {tag: "emptied", way: "setting"}];
        }
        function test_whatWasDeletedFromASecureFieldDoesntComeBack(data) {
            const item = made(bound);
            for (const key of "abc") {
                keyClick(key);
            }
            compare(item.setting, "abc");
            if (data.way === "keys") {
                item.field.selectAll();
                keyClick(Qt.Key_Delete);
            } else {
                item.setting = "";
            }
            compare(item.text, "");
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            keyClick(Qt.Key_Z, Qt.ControlModifier | Qt.ShiftModifier);
            keyClick(Qt.Key_Y, Qt.ControlModifier);
            compare(item.text, "");
        }

        function test_aPlainFieldCanBeUndone() {
            const item = made(plain);
            keyClick("a");
            keyClick(Qt.Key_Z, Qt.ControlModifier);
            compare(item.text, "");
        }

        function test_theTextOfASecureFieldEndsBeforeItsEye() {
            const item = made(bound, {setting: "x".repeat(100)});
            const eye = part(item, "eye");
            compare(eye.x + eye.width, 300);
            compare(item.field.rightPadding, 11 + eye.width);
            compare(eye.height, item.field.height);
        }
    }
}
