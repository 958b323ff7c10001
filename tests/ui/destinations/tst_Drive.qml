pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

// The panel of Google Drive.
Stage {
    id: root

    Case {
        id: test

        name: "Drive"

        function prepare() {
            root.prepared.state = "noDisk";
            root.prepared.state = "fresh";
            root.prepared.takeAsked();
        }

        // The panel of this file in a state.
        function made(state) {
            root.prepared.state = state;
            return part(drawn(root.page), "drive");
        }

        // Which of the named parts are on show.
        function shown(panel) {
            return ["signIn", "signInNote", "waiting", "cancel", "error", "usage", "metrics",
                "folder", "forecast", "disclosure", "credentials"].filter(
                    name => part(panel, name).visible);
        }

        function test_whatEachStateShows_data() {
            return [
                {tag: "noDisk", shown: ["signIn", "signInNote", "disclosure"]},
                {tag: "driveConnecting", shown: ["waiting", "cancel", "disclosure"]},
                {tag: "driveError", shown: ["signIn", "signInNote", "error", "disclosure"]},
                {tag: "driveConnected", shown: ["usage", "metrics", "folder"], maybe: "forecast"},
                {tag: "driveVersions", shown: ["usage", "metrics", "folder", "forecast"]},
                {tag: "driveNoQuota", shown: ["metrics", "folder"], maybe: "forecast"}];
        }
        function test_whatEachStateShows(data) {
            const panel = made(data.tag);
            compare(shown(panel).filter(name => name !== data.maybe), data.shown);
            compare(part(panel, "title").line, "Google Drive");
            const connected = data.shown.includes("folder");
            compare(part(panel, "subtitle").line, connected ? "Account collegato"
                                                            : "Account non collegato");
            compare(part(panel, "toggle").enabled, connected);
            compare(part(panel, "spinner").visible, data.tag === "driveConnecting");
            compare(ScreenReader.faults(root.Window.window), []);
        }

        function test_itsTexts() {
            const panel = made("noDisk");
            compare(part(panel, "signIn").text, "Accedi con Google");
            compare(part(panel, "signInNote").words,
                    "L'app accede solo ai file che crea su Drive, non agli altri.");
            compare(part(panel, "disclosure").text, "Credenziali OAuth personali");
            compare(part(panel, "credentialsNote").words, "Facoltative. Da inserire prima di "
                    + "accedere, per usare un client OAuth proprio al posto di quello condiviso.");
            compare(part(panel, "clientID").label, "Client ID");
            compare(part(panel, "clientSecret").label, "Client secret");
            verify(part(panel, "clientSecret").secure);
            compare(part(panel, "waitingText").text,
                    "Completa l'accesso a Google nel browser...");
            compare(part(panel, "cancel").text, "Annulla");
            compare(part(panel, "folder").label, "Cartella su Drive");
            compare(part(panel, "action").text, "Scollega account");
        }

        function test_signingIn_data() {
            return ways();
        }
        function test_signingIn(data) {
            const panel = made("noDisk");
            root.prepared.model.config.driveClientSecret = "GOCSPX-1";
            root.prepared.holdConnections();
            press(part(panel, "signIn"), data.way);
            verify(part(panel, "waiting").visible);
            verify(part(panel, "spinner").visible);
            verify(!part(panel, "signIn").visible);
            verify(!part(panel, "toggle").enabled);
            root.prepared.finish();
            verify(part(panel, "metrics").visible);
            verify(part(panel, "toggle").checked);
            compare(part(panel, "clientSecret").text, "");
            compare(root.prepared.model.config.driveClientSecret, "");
        }

        function test_cancellingASignIn_data() {
            return ways();
        }
        function test_cancellingASignIn(data) {
            const panel = made("noDisk");
            root.prepared.holdConnections();
            mouseClick(part(panel, "signIn"));
            verify(root.prepared.model.connections.drive.connecting);
            press(part(panel, "cancel"), data.way);
            root.prepared.finish();
            verify(!root.prepared.model.connections.drive.connecting);
        }

        function test_theKeyboardGoesAlongWithASignIn() {
            const panel = made("noDisk");
            root.prepared.holdConnections();
            press(part(panel, "signIn"), Qt.Key_Space);
            tryVerify(() => focused() === part(panel, "cancel"));
            verify(focused().ringed);
            root.prepared.finish();
            tryVerify(() => focused() === part(panel, "toggle"));
            verify(focused().ringed);
        }

        function test_aRefusalIsSaidInCoral() {
            const panel = made("noDisk");
            root.prepared.setConnectionError("Accesso a Google non completato");
            mouseClick(part(panel, "signIn"));
            const error = part(panel, "error");
            verify(error.visible);
            compare(error.text, "Accesso a Google non completato");
            compare(String(error.color), String(Theme.coral));
            verify(part(panel, "signIn").visible);
            verify(!root.prepared.model.config.driveEnabled);
        }

        function test_theCredentialsOpenAndClose_data() {
            return ways();
        }
        function test_theCredentialsOpenAndClose(data) {
            const panel = made("noDisk");
            const row = part(panel, "disclosure");
            verify(!part(panel, "credentials").visible);
            press(row, data.way);
            verify(part(panel, "credentials").visible);
            compare(part(row, "chevron").rotation, 90);
            Eye.look(root);
            press(row, data.way);
            verify(!part(panel, "credentials").visible);
            compare(part(row, "chevron").rotation, 0);
        }

        function test_itsFieldsAreTheSettings() {
            const panel = made("noDisk");
            panel.showCredentials = true;
            Eye.look(root);
            for (const [name, setting] of [["clientID", "driveClientID"],
                                           ["clientSecret", "driveClientSecret"]]) {
                part(panel, name).field.forceActiveFocus(Qt.TabFocusReason);
                keyClick("x");
                compare(root.prepared.model.config[setting], "x");
                root.prepared.model.config[setting] = "given";
                compare(part(panel, name).text, "given");
            }
        }

        function test_theFolderIsTheSetting() {
            const panel = made("driveConnected");
            const field = part(panel, "folder").field;
            compare(field.text, root.prepared.model.config.driveFolder);
            field.forceActiveFocus(Qt.TabFocusReason);
            field.selectAll();
            keyClick("a");
            keyClick("b");
            compare(root.prepared.model.config.driveFolder, "ab");
        }

        function test_disconnectingAsksFirst_data() {
            return ways();
        }
        function test_disconnectingAsksFirst(data) {
            const panel = made("driveVersions");
            press(part(panel, "action"), data.way);
            verify(panel.confirmDisconnect);
            const dialog = findChild(panel, "dialog");
            tryCompare(dialog, "opened", true);
            compare(dialog.title, "Scollegare Google Drive?");
            compare(dialog.message, "I backup su Drive si fermano. Quelli già fatti restano su "
                    + "Drive e tornano disponibili ricollegando lo stesso account.");
            compare([part(dialog, "action").text, part(dialog, "refusal").text],
                    ["Scollega", "Annulla"]);
            keyClick(Qt.Key_Return); // the safe answer
            tryCompare(dialog, "visible", false);
            verify(root.prepared.model.connections.drive.connected);
            press(part(panel, "action"), data.way);
            tryCompare(dialog, "opened", true);
            press(part(dialog, "action"), data.way);
            tryCompare(dialog, "visible", false);
            verify(!root.prepared.model.connections.drive.connected);
            verify(!root.prepared.model.config.driveEnabled);
            verify(part(panel, "signIn").visible);
            verify(!panel.confirmDisconnect);
        }

        function test_whatAnswersItselfIsntAskedAnyMore() {
            const panel = made("driveVersions");
            mouseClick(part(panel, "action"));
            const dialog = findChild(panel, "dialog");
            tryCompare(dialog, "opened", true);
            root.prepared.model.disconnectDrive();
            tryCompare(dialog, "visible", false);
            verify(!panel.confirmDisconnect);
        }

        function test_theSwitchIsTheSetting_data() {
            return ways();
        }
        function test_theSwitchIsTheSetting(data) {
            const panel = made("driveVersions");
            const toggle = part(panel, "toggle");
            verify(toggle.checked);
            compare(part(panel, "versions").value, "18");
            press(toggle, data.way);
            verify(!root.prepared.model.config.driveEnabled);
            verify(!toggle.checked);
            verify(toggle.enabled);
        }

        function test_aSwitchThatIsOnWithoutAnAccountCanOnlyBePutOff() {
            const panel = made("noDisk");
            root.prepared.model.config.driveEnabled = true;
            const toggle = part(panel, "toggle");
            verify(toggle.enabled);
            mouseClick(toggle);
            verify(!root.prepared.model.config.driveEnabled);
            verify(!toggle.enabled);
            mouseClick(toggle);
            verify(!root.prepared.model.config.driveEnabled);
        }
    }
}
