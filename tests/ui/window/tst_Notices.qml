import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Testing
import Vellomar.Window
import "Grounds.js" as Grounds

Item {
    id: root

    width: 620
    height: 520

    Component {
        id: licenses

        LicensesView {
            width: 620
            height: 520
        }
    }

    Component {
        id: about

        AboutView {
            width: implicitWidth
            height: implicitHeight
            version: "1.2.3"
        }
    }

    TestCase {
        name: "Notices"
        when: windowShown

        property Item view

        function init() {
            failOnWarning(/.*/);
            Motion.still = true;
        }

        function open(component, properties) {
            view = createTemporaryObject(component, root, properties ?? {});
            Eye.look(root);
        }

        function part(name) {
            return findChild(view, name);
        }

        function options() {
            return Array.from(part("tools").contentItem.children).filter(c => c.text);
        }

        function entries() {
            const menu = findChild(part("others"), "menu");
            const list = [];
            for (let i = 0; i < menu.count; ++i) {
                list.push(menu.itemAt(i));
            }
            return list;
        }

        function test_itOffersTheTwoToolsSideBySide() {
            open(licenses);
            compare(options().map(o => o.text), ["restic", "rclone"]);
            compare(view.selected, "restic");
            compare(part("tools").selection, "restic");
        }

        function test_itsPartsStandAsTold() {
            open(licenses);
            const tools = part("tools");
            const scrolling = part("scrolling");
            compare(tools.x, 20);
            compare(tools.y, 20);
            compare(scrolling.x, 20);
            compare(scrolling.y, 20 + tools.height + 14);
            compare(scrolling.width, 580);
            compare(scrolling.y + scrolling.height, 500);
            compare(part("others").x + part("others").width, 600);
            compare(part("text").padding, 14);
            compare(part("text").width, 580);
            compare(part("text").font.pixelSize, 11);
            compare(part("text").font.family, Theme.monospacedFamily);
        }

        function test_itsGroundsAreFlat() {
            open(licenses);
            const ground = y => Grounds.part(Grounds.ground, (y + 0.5) / 520);
            const looks = (x, y, colour) => {
                const pixel = Eye.at(view, x, y);
                verify(Grounds.isNear(pixel, colour), "%1 %2 %3 instead of %4".arg(pixel.r)
                       .arg(pixel.g).arg(pixel.b).arg(colour));
            };
            looks(10, 10, ground(10));
            looks(10, 510, ground(510));
            looks(28, 300, Grounds.under(ground(300), 0, 0.22));
            looks(300, 494, Grounds.under(ground(494), 0, 0.22));
            looks(20.5, part("scrolling").y + 0.5, ground(part("scrolling").y)); // a corner
            compare(part("ground").radius, 11);
        }

        function test_eachToolHasItsNotice() {
            open(licenses);
            verify(part("text").text.includes("restic"));
            verify(part("text").text.includes("Alexander Neumann"));
            mouseClick(options()[1]);
            compare(view.selected, "rclone");
            compare(part("tools").selection, "rclone");
            verify(part("text").text.includes("Nick Craig-Wood"));
            compare(part("text").text.trim(), Notices.text("rclone").trim());
            mouseClick(options()[0]);
            compare(view.selected, "restic");
        }

        function test_theOtherPartsAreInAMenu() {
            open(licenses);
            const others = part("others");
            verify(others.visible);
            compare(others.text, "Altre licenze");
            compare(entries().map(e => e.text), Notices.names().slice(2));
            for (const name of ["Qt", "ICU", "Inter", "Bootstrap Icons"]) {
                verify(entries().some(e => e.text === name), name);
            }
            mouseClick(others);
            const menu = findChild(others, "menu");
            tryVerify(() => menu.opened);
            verify(menu.y + menu.height <= 520);
            const wanted = entries().find(e => e.text === "ICU");
            mouseClick(wanted);
            tryVerify(() => !menu.visible);
            compare(view.selected, "ICU");
            compare(others.text, "ICU");
            compare(others.kind, PillButton.Kind.Primary);
            compare(ScreenReader.description(others), "Altre licenze");
            verify(options().every(o => !o.checked));
            compare(part("text").text.trim(), Notices.text("ICU").trim());
            mouseClick(options()[0]);
            compare(others.text, "Altre licenze");
        }

        function test_theMenuWorksByKeys() {
            open(licenses);
            const others = part("others");
            const menu = findChild(others, "menu");
            options()[0].forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Tab);
            verify(others.activeFocus);
            keyClick(Qt.Key_Return);
            tryVerify(() => menu.opened);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryVerify(() => !menu.visible);
            compare(view.selected, Notices.names()[3]);
            tryVerify(() => others.activeFocus);
            keyClick(Qt.Key_Space);
            tryVerify(() => menu.opened);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !menu.visible);
            compare(view.selected, Notices.names()[3]);
        }

        function test_aNoticeThatIsMissingIsSaidToBe() {
            open(licenses, {selected: "nothing"});
            compare(part("text").text, "Licenza non trovata.");
        }

        function test_theTextCanBeSelectedAndNotChanged() {
            open(licenses);
            const text = part("text");
            const before = text.text;
            mouseClick(text, 100, 40);
            keyClick(Qt.Key_X);
            keyClick(Qt.Key_Delete);
            compare(text.text, before);
            mousePress(text, 20, 20);
            mouseMove(text, 200, 20);
            mouseMove(text, 300, 20);
            mouseRelease(text, 300, 20);
            verify(text.selectedText.length > 10);
            verify(before.includes(text.selectedText));
            text.forceActiveFocus();
            keyClick(Qt.Key_A, Qt.ControlModifier);
            compare(text.selectedText.length, before.length);
        }

        function test_markupIsShownAsText() {
            open(licenses);
            compare(part("text").textFormat, TextEdit.PlainText);
        }

        function test_theScrollIndicatorCanAlwaysBeSeen() {
            open(licenses);
            const scrolling = part("scrolling");
            verify(scrolling.contentHeight > scrolling.height);
            const bar = part("bar");
            verify(bar.visible);
            compare(bar.contentItem.opacity, 1);
            wait(0);
            Eye.look(root);
            const beside = Eye.at(bar, 1, 10);
            const on = Eye.at(bar, bar.width / 2, 10);
            verify(on.g > beside.g + 0.1);
        }

        function test_theWheelScrolls() {
            open(licenses);
            mouseWheel(part("scrolling"), 200, 200, 0, -240);
            tryVerify(() => part("scrolling").contentY > 0);
        }

        function test_theKeysScroll() {
            open(licenses);
            const scrolling = part("scrolling");
            part("text").forceActiveFocus(Qt.TabFocusReason);
            const end = scrolling.contentHeight - scrolling.height;
            keyClick(Qt.Key_Down);
            compare(scrolling.contentY, 40);
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Up);
            compare(scrolling.contentY, 0);
            keyClick(Qt.Key_PageDown);
            compare(scrolling.contentY, scrolling.height - 28);
            keyClick(Qt.Key_PageUp);
            compare(scrolling.contentY, 0);
            keyClick(Qt.Key_Space);
            verify(scrolling.contentY > 0);
            keyClick(Qt.Key_End);
            compare(scrolling.contentY, end);
            keyClick(Qt.Key_Home);
            compare(scrolling.contentY, 0);
        }

        function test_anotherNoticeBeginsAtItsTop() {
            open(licenses);
            part("scrolling").contentY = 100;
            view.selected = "Qt";
            compare(part("scrolling").contentY, 0);
        }

        function test_everyNoticeFitsItsWidth() {
            open(licenses);
            for (const name of Notices.names()) {
                view.selected = name;
                const text = part("text");
                compare(text.text.length > 100, true, name);
                verify(text.contentWidth <= 552 + 0.5, name);
                compare(ScreenReader.name(text), name);
            }
        }

        function test_aboutTellsNameVersionAndCredits() {
            open(about);
            const told = ScreenReader.tree(view).map(line => line.slice(line.indexOf(": ") + 2));
            compare(told, ["Informazioni su Vellomar", "Vellomar", "Versione 1.2.3",
                           "Backup cifrati con restic e rclone."]);
            compare(part("credits").font.pixelSize, 11);
            compare(String(part("credits").color), String(Theme.text));
            verify((part("mark") as BrandMark) !== null);
        }

        function test_aLongVersionStaysInside() {
            open(about, {version: "1.2.3-<b>alfa</b>-con-un-nome-che-non-finisce-mai-1234567890"});
            const version = part("version");
            verify(version.paintedWidth <= view.width - 32);
            compare(version.textFormat, Text.PlainText);
        }
    }
}
