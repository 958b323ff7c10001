pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Sources

// The folders that go into the backup, and what they weigh.
Panel {
    id: root

    required property AppModel model
    required property SourcesView view
    // Where what was asked for last can be seen to have been done, or why it wasn't.
    readonly property Item outcome: refusal.visible ? refusal : actions

    // Moves the focus on before the row, which has it, is destroyed.
    function remove(row: FolderRow, index: int) {
        if (row.closing.activeFocus) {
            const neighbour = (rows.itemAt(index + 1) ?? rows.itemAt(index - 1)) as FolderRow;
            (neighbour?.closing ?? add).forceActiveFocus(Qt.TabFocusReason);
        }
        model.removeSource(row.folder.path);
    }

    title: qsTranslate("Texts", "Cartelle salvate")

    Column {
        objectName: "list"
        width: parent.width
        visible: rows.count > 0
        Accessible.role: Accessible.List
        Accessible.name: root.title

        Repeater {
            id: rows

            model: root.view.folders

            FolderRow {
                id: row

                required property sourceRow value
                required property int index

                width: parent ? (parent as Item).width : 0
                folder: value
                divided: index > 0
                onRemoved: root.remove(row, index)
            }
        }
    }

    Paragraph {
        objectName: "none"
        width: parent.width
        visible: rows.count === 0
        words: qsTranslate("Texts", "Nessuna cartella: il backup non ha niente da salvare. "
                                    + "Aggiungine una, o trascinala in questa pagina.")
        color: Theme.secondary
    }

    Item {
        id: actions

        readonly property bool stacked: buttons.abreast + 16 + total.implicitWidth > width

        objectName: "actions"
        width: parent.width
        height: stacked && total.visible ? buttons.height + 10 + total.height : buttons.height

        FlowLayout {
            id: buttons

            // What they take side by side.
            readonly property real abreast: add.implicitWidth + spacing + measure.implicitWidth
                                            + (spinner.visible ? spacing + spinner.width : 0)

            width: actions.stacked ? parent.width : abreast
            spacing: 10

            PillButton {
                id: add

                objectName: "add"
                width: Math.min(implicitWidth, actions.width)
                text: qsTranslate("Texts", "Aggiungi cartella")
                onClicked: root.model.addSources()
            }

            PillButton {
                id: measure

                objectName: "measure"
                width: Math.min(implicitWidth, actions.width)
                kind: PillButton.Kind.Outline
                enabled: !root.model.sources.measurement.measuring
                text: root.view.measureLabel
                onClicked: root.model.measureSources()
            }

            // The button has its words, and they stand for minutes on a slow disk.
            Item {
                id: spinner

                width: 16
                height: measure.height
                visible: root.model.sources.measurement.measuring

                Spinner {
                    objectName: "spinner"
                    anchors.verticalCenter: parent.verticalCenter
                    running: spinner.visible
                }
            }
        }

        Paragraph {
            id: total

            objectName: "total"
            x: actions.stacked ? 0 : actions.width - width
            y: actions.stacked ? buttons.height + 10 : (buttons.height - height) / 2
            width: actions.stacked ? actions.width : implicitWidth
            room: actions.width
            visible: words !== ""
            words: root.view.total
            color: Theme.secondary
        }
    }

    InlineMessage {
        id: refusal

        objectName: "refusal"
        width: parent.width
        visible: text !== ""
        text: root.model.sources.refusal
        color: Theme.coral
        symbol: "exclamationmark.triangle"
    }
}
