import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Sheets

// Lets the user save, print or copy the key, and confirm that before the first backup. It is open
// while the model says so.
Sheet {
    id: root

    required property AppModel model
    property bool confirmed: false
    // After "Continua" it keeps its look until it has faded out.
    property bool leaving: false
    readonly property bool asking: leaving || !model.config.keySaved

    name: head.title
    visible: model.kit.showing
    first: (model.key.hasKey ? save : head.closing) as Item
    defaultButton: last
    onAboutToShow: {
        confirmed = false;
        leaving = false;
    }
    onDismissed: model.kit.showing = false

    // A new key must be confirmed again.
    Connections {
        target: root.model.key

        function onChanged() {
            root.confirmed = false;
        }
    }

    SheetHead {
        id: head

        width: parent.width
        title: qsTranslate("Texts", "Kit di recupero")
        subtitle: qsTranslate("Texts", "Da conservare fuori da questo Mac")
        onDismissed: root.dismissed()
    }

    Paragraph {
        objectName: "explanation"
        width: parent.width
        words: qsTranslate("Texts", "I backup sono cifrati con questa chiave. Se il Mac si rompe o viene rubato, senza la chiave non si recupera nulla.")
    }

    FlowLayout {
        width: parent.width
        spacing: 10

        PillButton {
            id: save

            objectName: "save"
            kind: PillButton.Kind.Outline
            text: qsTranslate("Texts", "Salva il kit")
            enabled: root.model.key.hasKey
            onClicked: root.model.saveRecoveryKit()
        }

        PillButton {
            objectName: "print"
            kind: PillButton.Kind.Outline
            text: qsTranslate("Texts", "Stampa")
            enabled: root.model.key.hasKey
            onClicked: root.model.printRecoveryKit()
        }

        PillButton {
            objectName: "copy"
            kind: PillButton.Kind.Outline
            text: root.model.key.copied ? qsTranslate("Texts", "Copiata per un minuto")
                                       : qsTranslate("Texts", "Copia la chiave")
            enabled: root.model.key.hasKey
            onClicked: root.model.copyKey()
        }
    }

    InlineMessage {
        readonly property bool warning: root.model.kit.notice.warning

        objectName: "notice"
        width: parent.width
        visible: text !== ""
        text: root.model.kit.notice.text
        symbol: warning ? "exclamationmark.triangle" : "checkmark.circle"
        color: warning ? Theme.coral : Theme.mint
    }

    InlineMessage {
        objectName: "error"
        width: parent.width
        visible: text !== ""
        text: root.model.key.error
        color: Theme.coral
    }

    CheckRow {
        objectName: "confirmation"
        width: parent.width
        visible: root.asking
        text: qsTranslate("Texts", "Ho messo la chiave in un posto sicuro, fuori da questo Mac")
        checked: root.confirmed
        enabled: root.model.key.hasKey
        onAsked: checked => root.confirmed = checked
    }

    PillButton {
        id: last

        objectName: "last"
        anchors.right: parent.right
        kind: root.asking ? PillButton.Kind.Primary : PillButton.Kind.Outline
        text: root.asking ? qsTranslate("Texts", "Continua") : qsTranslate("Texts", "Chiudi")
        enabled: !root.asking || (root.confirmed && root.model.key.hasKey)
        onClicked: {
            if (root.asking) {
                root.leaving = true;
                root.model.confirmKeySaved();
            } else {
                root.dismissed();
            }
        }
    }
}
