import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Glance

// The form by which a server is connected. Its fields are the settings, but for the secret, which
// nobody keeps.
Column {
    id: root

    required property AppModel model
    required property DestinationsSummary summary
    required property string secret

    readonly property serverForm form: summary.form
    readonly property connection account: model.connections.server
    readonly property bool ready: !account.connecting && form.ready(secret)

    readonly property var kinds: [
        {value: ServerKind.Sftp, label: summary.name(ServerKind.Sftp)},
        {value: ServerKind.Webdav, label: summary.name(ServerKind.Webdav)},
        {value: ServerKind.S3, label: summary.name(ServerKind.S3)},
        {value: ServerKind.Smb, label: summary.name(ServerKind.Smb)}
    ]

    signal secretEdited(secret: string)
    signal connectionAsked()

    function ask() {
        if (ready) {
            connectionAsked();
        }
    }

    spacing: 14

    Segmented {
        objectName: "kinds"
        width: Math.min(implicitWidth, parent.width)
        enabled: !root.account.connecting
        name: qsTranslate("Texts", "Tipo di server")
        options: root.kinds
        selection: root.model.config.serverKind
        onChosen: value => root.model.config.serverKind = value
    }

    FlowLayout {
        id: fields

        readonly property real half: width >= 420 ? (width - spacing) / 2 : width
        readonly property real portWidth: 96

        objectName: "fields"
        width: parent.width
        spacing: 14

        LabelledField {
            objectName: "host"
            width: fields.width - (port.visible ? fields.portWidth + fields.spacing : 0)
            readOnly: root.account.connecting
            label: root.form.hostLabel
            placeholderText: root.form.hostSample
            text: root.model.config.serverHost
            onEdited: text => root.model.config.serverHost = text
            onAccepted: root.ask()
        }

        LabelledField {
            id: port

            objectName: "port"
            width: fields.portWidth
            visible: root.form.hasPort
            readOnly: root.account.connecting
            digitsOnly: true
            label: qsTranslate("Texts", "Porta")
            placeholderText: root.form.portSample
            text: root.model.config.serverPort
            onEdited: text => root.model.config.serverPort = text
            onAccepted: root.ask()
        }

        LabelledField {
            objectName: "user"
            width: fields.half
            readOnly: root.account.connecting
            label: root.form.userLabel
            text: root.model.config.serverUser
            onEdited: text => root.model.config.serverUser = text
            onAccepted: root.ask()
        }

        LabelledField {
            objectName: "secret"
            width: fields.half
            readOnly: root.account.connecting
            secure: true
            label: root.form.secretLabel
            text: root.secret
            onEdited: text => root.secretEdited(text)
            onAccepted: root.ask()
        }

        LabelledField {
            id: keyFile

            objectName: "keyFile"
            width: fields.half
            visible: root.form.hasKeyFile
            readOnly: root.account.connecting
            label: qsTranslate("Texts", "Chiave SSH, al posto della password")
            placeholderText: "~/.ssh/id_ed25519"
            text: root.model.config.serverKeyFile
            onEdited: text => root.model.config.serverKeyFile = text
            onAccepted: root.ask()
        }

        LabelledField {
            objectName: "path"
            width: keyFile.visible ? fields.half : fields.width
            readOnly: root.account.connecting
            label: root.form.pathLabel
            text: root.model.config.serverPath
            onEdited: text => root.model.config.serverPath = text
            onAccepted: root.ask()
        }
    }

    Caution {
        objectName: "unencrypted"
        width: parent.width
        visible: root.form.unencrypted
        text: qsTranslate("Texts", "Indirizzo senza https: utente e password viaggiano in chiaro sulla rete. Va bene solo per un server in casa.")
    }

    InlineMessage {
        objectName: "error"
        width: parent.width
        visible: text !== ""
        text: root.account.error
        color: Theme.coral
    }

    Item {
        implicitWidth: connect.width + 9 + spinner.width
        implicitHeight: connect.height

        PillButton {
            id: connect

            objectName: "connect"
            text: root.account.connecting ? qsTranslate("Texts", "Collegamento...")
                                          : qsTranslate("Texts", "Collega")
            enabled: root.ready
            onClicked: root.ask()
        }

        Spinner {
            id: spinner

            objectName: "spinner"
            anchors.verticalCenter: parent.verticalCenter
            x: connect.width + 9
            visible: root.account.connecting
        }
    }
}
