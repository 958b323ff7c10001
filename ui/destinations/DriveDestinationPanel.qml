import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Glance

// The account on Google Drive: signing in to it, or what is known of it.
Panel {
    id: root

    required property AppModel model
    required property DestinationsSummary summary
    readonly property place place: summary.drive
    readonly property connection account: model.connections.drive
    readonly property bool connected: account.connected
    property bool showCredentials: false
    property bool confirmDisconnect: false

    Accessible.name: place.title
    onConnectedChanged: confirmDisconnect = false

    DestinationHeader {
        objectName: "header"
        width: parent.width
        place: root.place
        onAsked: enabled => {
            root.model.config.driveEnabled = enabled;
            root.model.refresh(DestinationID.Drive);
        }
    }

    PillButton {
        objectName: "signIn"
        visible: !root.connected && !root.account.connecting
        text: qsTranslate("Texts", "Accedi con Google")
        onClicked: root.model.connectDrive()
    }

    Paragraph {
        objectName: "signInNote"
        width: parent.width
        visible: !root.connected && !root.account.connecting
        words: qsTranslate("Texts", "L'app accede solo ai file che crea su Drive, non agli altri.")
        font.pixelSize: 12
        color: Theme.secondary
    }

    FlowLayout {
        width: parent.width
        visible: root.account.connecting
        spacing: 14

        Item {
            objectName: "waiting"
            width: Math.min(parent.width, waiting.x + Math.ceil(waiting.implicitWidth))
            height: cancel.height

            Spinner {
                id: spinner

                objectName: "spinner"
                anchors.verticalCenter: parent.verticalCenter
            }

            Label {
                id: waiting

                objectName: "waitingText"
                anchors.verticalCenter: parent.verticalCenter
                x: spinner.width + 9
                width: Math.max(0, parent.width - x)
                text: qsTranslate("Texts", "Completa l'accesso a Google nel browser...")
                elide: Text.ElideRight
            }
        }

        PillButton {
            id: cancel

            objectName: "cancel"
            kind: PillButton.Kind.Outline
            text: qsTranslate("Texts", "Annulla")
            onClicked: root.model.cancelDriveConnection()
        }
    }

    InlineMessage {
        objectName: "error"
        width: parent.width
        visible: text !== ""
        text: root.account.error
        color: Theme.coral
    }

    UsageBar {
        objectName: "usage"
        width: parent.width
        visible: root.connected && root.place.hasUsage
        used: root.place.used
        total: root.place.total
        words: root.place.usageText
    }

    PlaceMetrics {
        objectName: "metrics"
        width: parent.width
        visible: root.connected
        place: root.place
        action: qsTranslate("Texts", "Scollega account")
        onActed: root.confirmDisconnect = true
    }

    LabelledField {
        objectName: "folder"
        width: parent.width
        visible: root.connected
        label: qsTranslate("Texts", "Cartella su Drive")
        text: root.model.config.driveFolder
        onEdited: text => root.model.config.driveFolder = text
    }

    ForecastLine {
        objectName: "forecast"
        width: parent.width
        visible: root.connected && text !== ""
        forecast: root.place.forecast
    }

    DisclosureRow {
        objectName: "disclosure"
        visible: !root.connected
        text: qsTranslate("Texts", "Credenziali OAuth personali")
        expanded: root.showCredentials
        onClicked: root.showCredentials = !root.showCredentials
    }

    Column {
        objectName: "credentials"
        width: parent.width
        visible: !root.connected && root.showCredentials
        spacing: 14

        Paragraph {
            objectName: "credentialsNote"
            width: parent.width
            words: qsTranslate("Texts", "Facoltative. Da inserire prima di accedere, per usare un client OAuth proprio al posto di quello condiviso.")
            font.pixelSize: 12
            color: Theme.secondary
        }

        LabelledField {
            objectName: "clientID"
            width: parent.width
            label: qsTranslate("Texts", "Client ID")
            text: root.model.config.driveClientID
            onEdited: text => root.model.config.driveClientID = text
        }

        LabelledField {
            objectName: "clientSecret"
            width: parent.width
            label: qsTranslate("Texts", "Client secret")
            secure: true
            text: root.model.config.driveClientSecret
            onEdited: text => root.model.config.driveClientSecret = text
        }
    }

    ConfirmationDialog {
        objectName: "dialog"
        visible: root.confirmDisconnect
        title: qsTranslate("Texts", "Scollegare Google Drive?")
        message: qsTranslate("Texts", "I backup su Drive si fermano. Quelli già fatti restano su Drive e tornano disponibili ricollegando lo stesso account.")
        action: qsTranslate("Texts", "Scollega")
        refusal: qsTranslate("Texts", "Annulla")
        onConfirmed: {
            root.confirmDisconnect = false;
            root.model.disconnectDrive();
        }
        onDismissed: root.confirmDisconnect = false
    }
}
