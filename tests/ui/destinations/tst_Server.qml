pragma ComponentBehavior: Bound
import QtQuick
import QtTest
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Testing

// The panel of the private server.
Stage {
    id: root

    Case {
        id: test

        name: "Server"

        function prepare() {
            root.prepared.state = "noDisk";
            root.prepared.state = "fresh";
            root.prepared.takeAsked();
        }

        // The panel of this file in a state.
        function made(state) {
            root.prepared.state = state;
            return part(drawn(root.page), "server");
        }

        function type(panel, name, text) {
            const field = part(panel, name).field;
            field.forceActiveFocus(Qt.TabFocusReason);
            field.selectAll();
            keyClick(Qt.Key_Delete);
            for (const key of text) {
                keyClick(key);
            }
        }

        function test_theFieldsOfEachKind_data() {
            return [
                {tag: "sftp", label: "SFTP", host: ["Indirizzo", "nas.example.org"], port: "22",
                    user: "Utente", secret: "Password", path: "Cartella", key: true},
                {tag: "webdav", label: "WebDAV", host: ["URL",
                    "https://nas.example.org/remote.php/dav/files/utente"], user: "Utente",
                    secret: "Password", path: "Cartella"},
                {tag: "s3", label: "S3", host: ["Endpoint", "https://s3.example.org"],
                    user: "Access key", secret: "Secret key", path: "Bucket e cartella"},
                {tag: "smb", label: "SMB", host: ["Indirizzo", "nas.example.org"], port: "445",
                    user: "Utente", secret: "Password", path: "Condivisione e cartella"}];
        }
        function test_theFieldsOfEachKind(data) {
            const panel = made(data.tag);
            compare(part(panel, "title").line, "Server privato");
            compare(part(panel, "subtitle").line, "Non collegato");
            compare([part(panel, "host").label, part(panel, "host").placeholderText], data.host);
            compare(part(panel, "port").visible, data.port !== undefined);
            if (data.port) {
                compare([part(panel, "port").label, part(panel, "port").placeholderText],
                        ["Porta", data.port]);
                compare(part(panel, "port").y, part(panel, "host").y);
            }
            compare(part(panel, "user").label, data.user);
            compare(part(panel, "secret").label, data.secret);
            verify(part(panel, "secret").secure);
            compare(part(panel, "keyFile").visible, data.key === true);
            if (data.key) {
                compare([part(panel, "keyFile").label, part(panel, "keyFile").placeholderText],
                        ["Chiave SSH, al posto della password", "~/.ssh/id_ed25519"]);
            }
            compare(part(panel, "path").label, data.path);
            compare(part(panel, "connect").text, "Collega");
            verify(!part(panel, "connect").enabled);
            verify(!part(panel, "unencrypted").visible);
            compare(ScreenReader.faults(root.Window.window), []);
        }

        function test_theKindIsChosenOfFour() {
            const panel = made("sftp");
            const kinds = part(panel, "kinds");
            compare(kinds.options.map(option => option.label), ["SFTP", "WebDAV", "S3", "SMB"]);
            compare(kinds.options.map(option => option.value), [ServerKind.Sftp,
                ServerKind.Webdav, ServerKind.S3, ServerKind.Smb]);
            mouseClick(kinds.contentItem.children[1]);
            compare(root.prepared.model.config.serverKind, ServerKind.Webdav);
            compare(kinds.selection, ServerKind.Webdav);
            verify(!part(panel, "port").visible);
            keyClick(Qt.Key_Right);
            compare(root.prepared.model.config.serverKind, ServerKind.S3);
            compare(part(panel, "host").label, "Endpoint");
        }

        function test_theButtonNeedsWhatAServerNeeds() {
            const panel = made("webdav");
            const button = part(panel, "connect");
            const set = (host, user, key) => {
                root.prepared.model.config.serverHost = host;
                root.prepared.model.config.serverUser = user;
                root.prepared.model.config.serverKeyFile = key;
            };
            set("", "", "");
            verify(!button.enabled);
            type(panel, "secret", "segreto");
            verify(!button.enabled);
            type(panel, "host", "https");
            verify(!button.enabled); // the user is needed, too
            type(panel, "user", "anna");
            verify(button.enabled);
            type(panel, "host", "  ");
            verify(!button.enabled);
            set("nas", "", "");
            verify(!button.enabled);
            root.prepared.model.config.serverKind = ServerKind.Sftp;
            verify(button.enabled);
            type(panel, "secret", "");
            verify(!button.enabled);
            set("nas", "", "~/.ssh/id");
            verify(button.enabled);
        }

        function test_theFieldsButTheSecretAreTheSettings() {
            const panel = made("sftp");
            for (const [name, setting, text] of [["host", "serverHost", "nas"],
                    ["port", "serverPort", "2222"], ["user", "serverUser", "a"],
                    ["keyFile", "serverKeyFile", "~/k"], ["path", "serverPath", "b/c"]]) {
                type(panel, name, text);
                compare(root.prepared.model.config[setting], text, name);
            }
            const before = JSON.stringify(root.prepared.model.config);
            type(panel, "secret", "segreto");
            compare(panel.secret, "segreto");
            compare(JSON.stringify(root.prepared.model.config), before);
        }

        function test_anAddressWithoutEncryptionIsCautionedAgainst() {
            const panel = made("webdav");
            const caution = part(panel, "unencrypted");
            verify(!caution.visible);
            type(panel, "host", "HTTP://NAS");
            verify(caution.visible);
            compare(caution.text, "Indirizzo senza https: utente e password viaggiano in chiaro "
                    + "sulla rete. Va bene solo per un server in casa.");
            compare(part(caution, "sign").name, "exclamationmark.triangle");
            compare(String(part(caution, "sign").color), String(Theme.amber));
            root.prepared.model.config.serverKind = ServerKind.Smb;
            verify(!caution.visible);
            root.prepared.model.config.serverKind = ServerKind.S3;
            verify(caution.visible);
        }

        function test_connecting_data() {
            return ways();
        }
        function test_connecting(data) {
            const panel = made("sftp");
            type(panel, "secret", "segreto");
            root.prepared.holdConnections();
            const button = part(panel, "connect");
            press(button, data.way);
            compare(button.text, "Collegamento...");
            verify(!button.enabled);
            verify(part(panel, "spinner").visible);
            verify(part(panel, "host").readOnly);
            verify(!part(panel, "kinds").enabled);
            press(button, data.way); // twice
            compare(panel.secret, "segreto");
            root.prepared.finish();
            compare(root.prepared.secret(), "segreto");
            verify(!part(panel, "form").visible);
            verify(part(panel, "metrics").visible);
            verify(part(panel, "toggle").checked);
            compare(part(panel, "subtitle").line, "SFTP · nas.example.org");
            compare(panel.secret, "");
            compare(part(panel, "secret").text, "");
        }

        function test_returnInAFieldConnects() {
            const panel = made("sftp");
            part(panel, "host").field.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return); // not ready yet
            verify(!root.prepared.model.connections.server.connected);
            type(panel, "secret", "segreto");
            keyClick(Qt.Key_Return);
            verify(root.prepared.model.connections.server.connected);
        }

        function test_onceConnectedNoKeyReachesTheForm() {
            const panel = made("sftp");
            type(panel, "secret", "segreto");
            part(panel, "host").field.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            verify(root.prepared.model.connections.server.connected);
            tryVerify(() => focused() === part(panel, "action"));
            verify(focused().ringed);
            keyClick("x");
            compare(root.prepared.model.config.serverHost, "nas.example.org");
        }

        function test_aRefusalIsSaidInCoralAndLeavesWhatWasTyped() {
            const panel = made("sftp");
            root.prepared.setConnectionError("Accesso rifiutato: controlla utente e password.");
            type(panel, "secret", "segreto");
            mouseClick(part(panel, "connect"));
            const error = part(panel, "error");
            verify(error.visible);
            compare(error.text, "Accesso rifiutato: controlla utente e password.");
            compare(String(error.color), String(Theme.coral));
            compare(panel.secret, "segreto");
            verify(part(panel, "connect").enabled);
            verify(!root.prepared.model.config.serverEnabled);
        }

        function test_leavingThePageLosesTheSecret() {
            root.prepared.state = "sftp";
            const page = drawn(root.page);
            type(part(page, "server"), "secret", "segreto");
            page.destroy();
            wait(0);
            const panel = part(drawn(root.page), "server");
            compare(panel.secret, "");
            compare(part(panel, "secret").text, "");
            compare(part(panel, "host").text, "nas.example.org");
        }

        function test_disconnectingAsksFirstAndReconnectingAsksForTheSecretAlone() {
            const panel = made("sftpConnected");
            compare(part(panel, "action").text, "Scollega server");
            mouseClick(part(panel, "action"));
            const dialog = findChild(panel, "dialog");
            tryCompare(dialog, "opened", true);
            compare(dialog.title, "Scollegare il server?");
            compare(dialog.message, "I backup sul server si fermano e la password salvata viene "
                    + "eliminata. Quelli già fatti restano sul server.");
            compare([part(dialog, "action").text, part(dialog, "refusal").text],
                    ["Scollega", "Annulla"]);
            keyClick(Qt.Key_Escape);
            tryCompare(dialog, "visible", false);
            verify(root.prepared.model.connections.server.connected);
            mouseClick(part(panel, "action"));
            tryCompare(dialog, "opened", true);
            mouseClick(part(dialog, "action"));
            tryCompare(dialog, "visible", false);
            verify(!root.prepared.model.connections.server.connected);
            verify(part(panel, "form").visible);
            compare(part(panel, "host").text, "nas.example.org");
            compare(part(panel, "user").text, "anna");
            verify(!part(panel, "connect").enabled);
            type(panel, "secret", "x");
            verify(part(panel, "connect").enabled);
        }

        function test_connectedItShowsRoomAndVersions() {
            const panel = made("s3Versioned");
            verify(part(panel, "usage").visible);
            compare(part(panel, "words").line, "800 GB usati di 4 TB");
            compare(part(panel, "versions").value, "7");
            compare(part(panel, "stored").value, "214 GB");
            verify(!part(panel, "free").visible);
            verify(part(panel, "forecast").visible);
            verify(!part(panel, "form").visible);
        }

        function test_theVersioningOfABucket_data() {
            return [
                {tag: "s3Versioned", sign: "checkmark.shield", colour: Theme.mint,
                    text: "Versioning attivo sul bucket: un backup cancellato resta recuperabile "
                        + "dal server."},
                {tag: "s3Unversioned", sign: "exclamationmark.shield", colour: Theme.amber,
                    text: "Versioning non attivo sul bucket. Con versioning e Object Lock i backup "
                        + "non si possono eliminare nemmeno con le credenziali di questo Mac."},
                {tag: "sftpConnected"}, {tag: "s3"}];
        }
        function test_theVersioningOfABucket(data) {
            const line = part(made(data.tag), "versioning");
            compare(line.visible, data.text !== undefined);
            if (data.text) {
                compare(line.text, data.text);
                compare(part(line, "sign").name, data.sign);
                compare(String(part(line, "sign").color), String(data.colour));
                compare(part(line, "words").font.pixelSize, 12);
            }
        }

        function test_theSwitchNeedsAConnection() {
            const toggle = part(made("sftp"), "toggle");
            verify(!toggle.enabled);
            mouseClick(toggle);
            verify(!root.prepared.model.config.serverEnabled);
            const other = part(made("smbConnected"), "toggle");
            verify(other.checked);
            mouseClick(other);
            verify(!root.prepared.model.config.serverEnabled);
            verify(!other.checked);
        }
    }
}
