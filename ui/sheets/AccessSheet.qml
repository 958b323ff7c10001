pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Sheets

// Asks for access to the whole disk when an action needs it. It is open while an action of the
// model waits for the answer.
Sheet {
    id: root

    required property AppModel model
    readonly property int action: model.access.request // a DiskAccess.GatedAction

    name: head.title
    visible: action !== DiskAccess.GatedAction.None
    first: settings
    defaultButton: settings
    onDismissed: model.access.request = DiskAccess.GatedAction.None

    SheetHead {
        id: head

        width: parent.width
        symbol: "lock.open"
        title: qsTranslate("Texts", "Serve l'accesso completo al disco")
        subtitle: qsTranslate("Texts", "Si concede una volta sola")
        onDismissed: root.dismissed()
    }

    Paragraph {
        objectName: "explanation"
        width: parent.width
        words: qsTranslate("Texts", "Senza questo permesso macOS chiede conferma per ogni cartella e il backup salta Mail, Safari e Messaggi.")
    }

    Column {
        width: parent.width
        spacing: 10
        Accessible.role: Accessible.List
        Accessible.name: head.title

        Repeater {
            model: [
                qsTranslate("Texts", "Apri Impostazioni di Sistema."),
                qsTranslate("Texts", "Attiva Vellomar nell'elenco."),
                qsTranslate("Texts", "Quando macOS lo chiede, scegli Esci e riapri.")
            ]

            Step {
                required property string modelData
                required property int index

                objectName: "step" + number
                width: parent ? (parent as Item).width : 0
                number: index + 1
                text: modelData
            }
        }
    }

    Row {
        anchors.right: parent.right
        spacing: 10

        PillButton {
            objectName: "without"
            kind: PillButton.Kind.Outline
            text: qsTranslate("Texts", "Continua senza")
            onClicked: root.model.continueWithoutAccess()
        }

        PillButton {
            id: settings

            objectName: "settings"
            text: qsTranslate("Texts", "Apri Impostazioni")
            onClicked: root.model.requestAccessInSettings(root.action)
        }
    }
}
