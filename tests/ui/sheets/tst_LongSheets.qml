pragma ComponentBehavior: Bound
import QtQuick

// Where a sheet stands in its window, and what it does with texts of any length.
Item {
    id: root

    width: 980
    height: 660

    SheetCase {
        name: "LongSheets"

        function test_longWordsWrapAndAreNeverMarkup() {
            const item = made("long");
            raise(item, item.kit);
            for (const name of ["notice", "error"]) {
                const words = part(part(item.kit, name), "words");
                verify(words.text.includes("<"));
                compare(words.textFormat, Text.PlainText);
                verify(words.lineCount > 4);
                verify(words.contentWidth <= words.width);
                verify(words.mapToItem(item.kit.contentItem, words.width, 0).x
                       <= item.kit.width - 26);
                compare(words.height, words.contentHeight); // nothing is cut off
            }
            const error = part(item.kit, "error");
            const notice = part(item.kit, "notice");
            verify(notice.y + notice.height < error.y);
            verify(error.y + error.height < part(item.kit, "last").y);
            verify(!item.kit.scrolling.interactive);
        }

        function test_whatDoesNotFitScrolls() {
            const item = made();
            raise(item, item.kit);
            verify(!item.kit.scrolling.interactive);
            item.prepared.setKitNotice("Kit non salvato: " + "lungo/".repeat(700), true);
            settle();
            compare(item.kit.height, root.height - 48);
            compare(item.kit.y, 24);
            verify(item.kit.scrolling.interactive);
            // By the wheel.
            mouseWheel(item.kit.contentItem, 240, 300, 0, -120);
            tryVerify(() => item.kit.scrolling.contentY > 0);
            item.kit.scrolling.cancelFlick();
            // The keyboard brings into sight what it goes to.
            item.kit.confirmed = true;
            part(item.kit, "last").forceActiveFocus(Qt.TabFocusReason);
            const last = focused().mapToItem(item.kit.contentItem, 0, 0);
            verify(last.y > 0 && last.y + focused().height <= item.kit.height);
            compare(item.kit.scrolling.contentY,
                    item.kit.scrolling.contentHeight - item.kit.height);
            keyClick(Qt.Key_Tab);
            compare(focused().objectName, "cross");
            compare(item.kit.scrolling.contentY, 0);
            keyClick(Qt.Key_Escape);
            tryCompare(item.kit, "visible", false);
        }

        function test_openedAgainItBeginsAtItsTop() {
            const item = made();
            item.prepared.setKitNotice("lungo/".repeat(700), true);
            raise(item, item.kit);
            part(item.kit, "box").forceActiveFocus(Qt.TabFocusReason);
            verify(item.kit.scrolling.contentY > 0);
            keyClick(Qt.Key_Escape);
            tryCompare(item.kit, "visible", false);
            raise(item, item.kit);
            compare(item.kit.scrolling.contentY, 0);
        }

        function test_itStaysInTheMiddleOfItsWindow() {
            const item = made();
            raise(item, item.access);
            const overlay = item.access.parent;
            compare(item.access.x, Math.round((overlay.width - 480) / 2));
            compare(item.access.y, Math.round((overlay.height - item.access.height) / 2));
            item.prepared.setKitNotice("Due parole", false);
            raise(item, item.kit);
            const middle = item.kit.y + item.kit.height / 2;
            item.prepared.setKitNotice("Molte parole ".repeat(20), false);
            settle();
            verify(Math.abs(item.kit.y + item.kit.height / 2 - middle) <= 0.5);
        }
    }
}
