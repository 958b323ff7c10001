pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing

// The question before an action that can't be undone.
Item {
    id: root

    width: 700
    height: 500

    Component {
        id: scene
        Item {
            id: user

            property bool asking: false
            property bool closes: true // whether an answer closes the dialog
            readonly property alias dialog: dialog
            readonly property alias opener: opener

            anchors.fill: parent

            PillButton {
                id: opener
                text: "Scollega account"
                onClicked: user.asking = true
            }

            ConfirmationDialog {
                id: dialog

                visible: user.asking
                title: "Scollegare Google Drive?"
                message: "I backup su Drive si fermano."
                action: "Scollega"
                refusal: "Annulla"
                onConfirmed: {
                    if (user.closes) {
                        user.asking = false;
                    }
                }
                onDismissed: {
                    if (user.closes) {
                        user.asking = false;
                    }
                }
            }
        }
    }

    SignalSpy { id: confirmations; signalName: "confirmed" }
    SignalSpy { id: dismissals; signalName: "dismissed" }

    Case {
        name: "Confirmation"

        function shown(properties) {
            const item = drawn(scene, properties);
            for (const spy of [confirmations, dismissals]) {
                spy.target = item.dialog;
                spy.clear();
            }
            item.opener.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            tryCompare(item.dialog, "opened", true);
            grabImage(root);
            return item;
        }

        function answersAre(confirmed, dismissed) {
            compare([confirmations.count, dismissals.count], [confirmed, dismissed]);
        }

        function test_theSafeAnswerHasTheKeyboard() {
            const item = shown();
            verify(part(item.dialog, "refusal").activeFocus);
            verify(part(item.dialog, "refusal").ringed);
            compare(item.dialog.defaultButton, part(item.dialog, "refusal"));
        }

        function test_returnSpaceAndEscapeLeaveIt_data() {
            return [{tag: "return", key: Qt.Key_Return}, {tag: "enter", key: Qt.Key_Enter},
                {tag: "space", key: Qt.Key_Space}, {tag: "escape", key: Qt.Key_Escape}];
        }
        function test_returnSpaceAndEscapeLeaveIt(data) {
            const item = shown();
            keyClick(data.key);
            answersAre(0, 1);
            tryCompare(item.dialog, "visible", false);
            verify(item.opener.activeFocus);
        }

        function test_aReturnThatIsStillHeldFromItsOpenerAnswersNothing() {
            const item = createTemporaryObject(scene, root);
            confirmations.target = dismissals.target = item.dialog;
            confirmations.clear();
            dismissals.clear();
            item.opener.forceActiveFocus(Qt.TabFocusReason);
            keyPress(Qt.Key_Return);
            tryCompare(item.dialog, "opened", true);
            answersAre(0, 0);
            keyRelease(Qt.Key_Return);
            answersAre(0, 0);
            verify(item.dialog.visible);
        }

        function test_theStepTakesItsOwnChoice_data() {
            return [{tag: "mouse"}, {tag: "keys"}, {tag: "screen reader"}];
        }
        function test_theStepTakesItsOwnChoice(data) {
            const item = shown();
            const action = part(item.dialog, "action");
            if (data.tag === "mouse") {
                mouseClick(action);
            } else if (data.tag === "screen reader") {
                ScreenReader.perform(action, "Press");
            } else {
                keyClick(Qt.Key_Tab);
                verify(action.activeFocus);
                keyClick(Qt.Key_Return);
            }
            answersAre(1, 0);
            tryCompare(item.dialog, "visible", false);
        }

        function test_itAnswersOnce_data() {
            return [{tag: "while it stays", closes: false}, {tag: "while it goes", closes: true}];
        }
        function test_itAnswersOnce(data) {
            Motion.still = false;
            const item = shown({closes: data.closes});
            mouseClick(part(item.dialog, "action"));
            answersAre(1, 0);
            mouseClick(part(item.dialog, "action"));
            mouseClick(part(item.dialog, "refusal"));
            answersAre(1, 0);
        }

        function test_onceRefusedItCannotBeConfirmedWhileItGoes() {
            Motion.still = false;
            const item = shown();
            keyClick(Qt.Key_Escape);
            answersAre(0, 1);
            ScreenReader.perform(part(item.dialog, "action"), "Press");
            mouseClick(part(item.dialog, "action"));
            answersAre(0, 1);
        }

        function test_asksAgainTheNextTime() {
            const item = shown();
            mouseClick(part(item.dialog, "refusal"));
            tryCompare(item.dialog, "visible", false);
            item.asking = true;
            tryCompare(item.dialog, "opened", true);
            verify(part(item.dialog, "refusal").activeFocus);
            mouseClick(part(item.dialog, "action"));
            answersAre(1, 1);
        }

        function test_theSafeAnswerStandsAtTheTrailingSide() {
            const item = shown();
            const right = button => button.mapToItem(item.dialog.contentItem, button.width, 0).x;
            const refusal = part(item.dialog, "refusal");
            compare(right(refusal), item.dialog.width - item.dialog.margin);
            compare(right(part(item.dialog, "action")), right(refusal) - refusal.width - 10);
        }

        function test_answersThatAreTooLongForOneLineStandBelowEachOther() {
            const item = shown();
            item.dialog.action = "Ripristina e sovrascrivi tutto quanto";
            item.dialog.refusal = "Lascia tutto come sta adesso";
            tryVerify(() => part(item.dialog, "action").y > part(item.dialog, "refusal").y);
            verify(part(item.dialog, "action").mapToItem(item.dialog.contentItem, 0, 0).x
                   >= item.dialog.margin);
        }

        function test_theScreenReaderHearsTheWholeQuestion() {
            const item = shown();
            compare(ScreenReader.tree(item.dialog.contentItem),
                    ["Dialog: Scollegare Google Drive?", "Heading: Scollegare Google Drive?",
                     "StaticText: I backup su Drive si fermano.", "Button: Annulla",
                     "Button: Scollega"]);
            compare(ScreenReader.faults(item.dialog.contentItem), []);
        }

        function test_theStepIsInTheColourOfWhatIsWrong() {
            const item = shown();
            compare(String(part(item.dialog, "action").contentItem.color), String(Theme.coral));
            compare(String(part(item.dialog, "refusal").contentItem.color), String(Theme.ink));
        }
    }
}
