import QtQuick
import Vellomar.Design
import Vellomar.Testing
import Vellomar.Window

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

    Case {
        name: "Notices"
        property Item view

        function open(component, properties) {
            view = drawn(component, properties);
        }

        function options() {
            return Array.from(part(view, "tools").contentItem.children).filter(c => c.text);
        }

        function entries() {
            const menu = part(part(view, "others"), "menu");
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
            compare(part(view, "tools").selection, "restic");
        }

        function test_itsPartsStandInTheirPlaces() {
            open(licenses);
            const tools = part(view, "tools");
            const scrolling = part(view, "scrolling");
            compare(tools.x, 20);
            compare(tools.y, 20);
            compare(scrolling.x, 20);
            compare(scrolling.y, 20 + tools.height + 14);
            compare(scrolling.width, 580);
            compare(scrolling.y + scrolling.height, 500);
            compare(part(view, "others").x + part(view, "others").width, 600);
            compare(part(view, "text").padding, 14);
            compare(part(view, "text").width, 580);
            compare(part(view, "text").font.pixelSize, 11);
            compare(part(view, "text").font.family, Theme.monospacedFamily);
        }

        function test_itsGroundsAreFlat() {
            open(licenses);
            const ground = y => Colours.part(Colours.ground, (y + 0.5) / 520);
            looks(view, 10, 10, ground(10));
            looks(view, 10, 510, ground(510));
            looks(view, 28, 300, Colours.over(ground(300), 0, 0.22));
            looks(view, 300, 494, Colours.over(ground(494), 0, 0.22));
            const top = part(view, "scrolling").y;
            looks(view, 20.5, top + 0.5, ground(top)); // a corner
            compare(part(view, "ground").radius, 11);
        }

        function test_eachToolHasItsNotice() {
            open(licenses);
            verify(part(view, "text").text.includes("restic"));
            verify(part(view, "text").text.includes("Alexander Neumann"));
            mouseClick(options()[1]);
            compare(view.selected, "rclone");
            compare(part(view, "tools").selection, "rclone");
            verify(part(view, "text").text.includes("Nick Craig-Wood"));
            compare(part(view, "text").text.trim(), Notices.text("rclone").trim());
            mouseClick(options()[0]);
            compare(view.selected, "restic");
        }

        function test_theOtherPartsAreInAMenu() {
            open(licenses);
            const others = part(view, "others");
            verify(others.visible);
            compare(others.text, "Altre licenze");
            compare(entries().map(e => e.text), Notices.names().slice(2));
            for (const name of ["Qt", "ICU", "Inter", "Bootstrap Icons"]) {
                verify(entries().some(e => e.text === name), name);
            }
            mouseClick(others);
            const menu = part(others, "menu");
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
            compare(part(view, "text").text.trim(), Notices.text("ICU").trim());
            mouseClick(options()[0]);
            compare(others.text, "Altre licenze");
        }

        function test_theMenuWorksByKeys() {
            open(licenses);
            const others = part(view, "others");
            const menu = part(others, "menu");
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
            compare(part(view, "text").text, "Licenza non trovata.");
        }

        function test_theTextCanBeSelectedAndNotChanged() {
            open(licenses);
            const text = part(view, "text");
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
            compare(part(view, "text").textFormat, TextEdit.PlainText);
        }

        function test_theScrollIndicatorCanAlwaysBeSeen() {
            open(licenses);
            const scrolling = part(view, "scrolling");
            verify(scrolling.contentHeight > scrolling.height);
            const bar = part(view, "bar");
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
            mouseWheel(part(view, "scrolling"), 200, 200, 0, -240);
            tryVerify(() => part(view, "scrolling").contentY > 0);
        }

        function test_theKeysScroll() {
            open(licenses);
            const scrolling = part(view, "scrolling");
            part(view, "text").forceActiveFocus(Qt.TabFocusReason);
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
            part(view, "scrolling").contentY = 100;
            view.selected = "Qt";
            compare(part(view, "scrolling").contentY, 0);
        }

        function test_everyNoticeFitsItsWidth() {
            open(licenses);
            for (const name of Notices.names()) {
                view.selected = name;
                const text = part(view, "text");
                compare(text.text.length > 100, true, name);
                verify(text.contentWidth <= 552 + 0.5, name);
                compare(ScreenReader.name(text), name);
            }
        }

        function test_aboutReportsNameVersionAndCredits() {
            open(about);
            const lines = ScreenReader.tree(view).map(line => line.slice(line.indexOf(": ") + 2));
            compare(lines, ["Informazioni su Vellomar", "Vellomar", "Versione 1.2.3",
                           "Backup cifrati con restic e rclone."]);
            compare(part(view, "credits").font.pixelSize, 11);
            compare(String(part(view, "credits").color), String(Theme.text));
            verify((part(view, "mark") as BrandMark) !== null);
        }

        function test_aLongVersionStaysInside() {
            open(about, {version: "1.2.3-<b>alfa</b>-con-un-nome-che-non-finisce-mai-1234567890"});
            const version = part(view, "version");
            verify(version.paintedWidth <= view.width - 32);
            compare(version.textFormat, Text.PlainText);
        }
    }
}
