import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Glance

// The private server: the form to connect it, or what is known of it.
Panel {
    id: root

    required property AppModel model
    required property DestinationsSummary summary
    readonly property place place: summary.server
    readonly property connection account: model.connections.server
    readonly property bool connected: account.connected
    property string secret: "" // what is typed; it goes with the page
    property bool confirmDisconnect: false

    Accessible.name: place.title
    onConnectedChanged: {
        confirmDisconnect = false;
        if (connected) {
            secret = "";
        }
    }

    DestinationHeader {
        objectName: "header"
        width: parent.width
        place: root.place
        onAsked: enabled => {
            root.model.config.serverEnabled = enabled;
            root.model.refresh(DestinationID.Server);
        }
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
        action: qsTranslate("Texts", "Scollega server")
        onActed: root.confirmDisconnect = true
    }

    InlineMessage {
        objectName: "versioning"
        width: parent.width
        visible: text !== ""
        text: root.summary.bucketVersioning.text
        symbol: root.summary.bucketVersioning.warning ? "exclamationmark.shield"
                                                      : "checkmark.shield"
        signColor: root.summary.bucketVersioning.warning ? Theme.amber : Theme.mint
        color: Theme.text
        font.pixelSize: 12
    }

    ForecastLine {
        objectName: "forecast"
        width: parent.width
        visible: root.connected && text !== ""
        forecast: root.place.forecast
    }

    ServerForm {
        objectName: "form"
        width: parent.width
        visible: !root.connected
        model: root.model
        summary: root.summary
        secret: root.secret
        onSecretEdited: secret => root.secret = secret
        onConnectionAsked: root.model.connectServer(root.secret)
    }

    ConfirmationDialog {
        objectName: "dialog"
        visible: root.confirmDisconnect
        title: qsTranslate("Texts", "Scollegare il server?")
        message: qsTranslate("Texts", "I backup sul server si fermano e la password salvata viene eliminata. Quelli già fatti restano sul server.")
        action: qsTranslate("Texts", "Scollega")
        refusal: qsTranslate("Texts", "Annulla")
        onConfirmed: {
            root.confirmDisconnect = false;
            root.model.disconnectServer();
        }
        onDismissed: root.confirmDisconnect = false
    }
}
