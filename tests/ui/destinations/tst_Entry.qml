pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

// Whatever is typed or pasted into a field is what the settings hold.
Stage {
    id: root

    TextEdit {
        id: source
        visible: false
        textFormat: TextEdit.PlainText
    }

    Case {
        id: test

        name: "Entry"

        readonly property var fields: [["drive", "clientID", "driveClientID"],
            ["drive", "clientSecret", "driveClientSecret"], ["server", "host", "serverHost"],
            ["server", "user", "serverUser"], ["server", "keyFile", "serverKeyFile"],
            ["server", "path", "serverPath"], ["server", "port", "serverPort"]]

        function prepare() {
            root.prepared.state = "fresh";
            root.prepared.state = "sftp";
        }

        function opened() {
            const page = drawn(root.page);
            part(page, "drive").showCredentials = true;
            Eye.look(root);
            return page;
        }

        function paste(field, text) {
            source.text = text;
            source.selectAll();
            source.copy();
            field.forceActiveFocus(Qt.TabFocusReason);
            field.selectAll();
            if (text === "") {
                keyClick(Qt.Key_Delete);
            } else {
                field.paste();
            }
        }

        function test_oddTexts_data() {
            return [
                {tag: "empty", text: "", kept: ""},
                {tag: "blanks", text: "   ", kept: "   "},
                {tag: "tabs", text: "\ta\t", kept: "\ta\t"},
                {tag: "line feeds", text: "one\ntwo\r\n", kept: "onetwo"},
                {tag: "long", text: "x".repeat(10000), kept: "x".repeat(10000)},
                {tag: "emoji", text: "🗄️ nas 🔒", kept: "🗄️ nas 🔒"},
                {tag: "right-to-left", text: "שרת.example", kept: "שרת.example"},
                {tag: "leading hyphen", text: "-oProxyCommand=x", kept: "-oProxyCommand=x"},
                {tag: "quotes", text: "a\"b\\c'{}%1", kept: "a\"b\\c'{}%1"},
                {tag: "markup", text: "<b>a</b>&amp;", kept: "<b>a</b>&amp;"},
                {tag: "letters and digits", text: "porta 22", kept: "porta 22"}];
        }
        function test_oddTexts(data) {
            const page = opened();
            for (const [panel, name, setting] of fields) {
                const field = part(part(page, panel), name).field;
                paste(field, data.text);
                const kept = name === "port" ? data.kept.replace(/[^0-9]/g, "") : data.kept;
                compare(root.prepared.model.config[setting], kept, name);
                compare(field.text, kept, name);
            }
        }

        function test_theFolderOnDriveTakesOddTextsToo_data() {
            return test_oddTexts_data();
        }
        function test_theFolderOnDriveTakesOddTextsToo(data) {
            root.prepared.state = "driveConnected";
            const page = drawn(root.page);
            paste(part(part(page, "drive"), "folder").field, data.text);
            compare(root.prepared.model.config.driveFolder, data.kept);
        }

        function test_theSecretIsHandedOverAsItWasTyped_data() {
            return test_oddTexts_data().filter(row => row.text !== "");
        }
        function test_theSecretIsHandedOverAsItWasTyped(data) {
            const panel = part(opened(), "server");
            paste(part(panel, "secret").field, data.text);
            mouseClick(part(panel, "connect"));
            compare(root.prepared.secret(), data.kept);
            for (const [, name, setting] of fields) {
                verify(root.prepared.model.config[setting] !== data.kept
                       || data.kept.trim() === "", name);
            }
        }

        function test_noFieldGrowsWithItsText() {
            const page = opened();
            const before = fields.map(([panel, name]) => part(part(page, panel), name).height);
            for (const [panel, name] of fields) {
                paste(part(part(page, panel), name).field, "x".repeat(10000));
            }
            Eye.look(root);
            compare(fields.map(([panel, name]) => part(part(page, panel), name).height), before);
            compare(page.contentWidth, page.width);
        }

        function test_aTextInTheSettingsIsShownAsItIs() {
            const page = opened();
            root.prepared.model.config.serverPort = "ssh";
            compare(part(part(page, "server"), "port").text, "ssh");
        }
    }
}
