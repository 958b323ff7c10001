pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Sources

// What doesn't go into the backup.
Panel {
    id: root

    required property AppModel model
    required property SourcesView view
    // The text of the field that was asked to be added last; what was refused of it is shown until
    // it is changed.
    property string asked: ""
    readonly property string error: field.text !== "" && field.text === asked
                                    ? model.sources.excludeError : ""

    readonly property alias field: field

    function add() {
        if (field.text.trim() !== "") {
            asked = field.text;
            model.addExclude(field.text);
        }
    }

    title: qsTranslate("Texts", "Esclusioni")

    Connections {
        target: root.model.sources

        function onExcludeTaken() {
            if (field.text === root.asked) { // and not what was typed since
                field.clear();
            }
        }
    }

    Paragraph {
        objectName: "note"
        width: parent.width
        words: qsTranslate("Texts", "Percorsi o nomi esclusi dal backup. Un nome senza barre, come "
                                    + "node_modules, vale in ogni cartella.")
        font.pixelSize: 12
        color: Theme.secondary
    }

    FlowLayout {
        id: chips

        objectName: "chips"
        width: parent.width
        spacing: 8
        visible: patterns.count > 0
        Accessible.role: Accessible.List
        Accessible.name: root.title

        Repeater {
            id: patterns

            model: root.view.exclusions

            Chip {
                required property excludeRow value

                text: value.pattern
                fault: value.fault
                help: qsTranslate("Texts", "Rimuovi")
                widest: Math.min(320, chips.width)
                onRemoved: root.model.removeExclude(value.pattern)
            }
        }
    }

    InlineMessage {
        objectName: "faults"
        width: parent.width
        visible: text !== ""
        text: root.view.faults
        color: Theme.coral
        symbol: "exclamationmark.triangle"
    }

    Column {
        width: parent.width
        spacing: 10

        Item {
            id: entry

            readonly property real wanted: add.implicitWidth + 10 + defaults.implicitWidth
            readonly property bool stacked: width < 220 + 10 + wanted

            objectName: "entry"
            width: parent.width
            height: stacked ? field.height + 10 + buttons.height
                            : Math.max(field.height, buttons.height)

            TextField {
                id: field

                objectName: "field"
                y: entry.stacked ? 0 : (entry.height - height) / 2
                width: entry.stacked ? entry.width : entry.width - entry.wanted - 10
                placeholderText: qsTranslate("Texts", "Percorso o nome da escludere")
                Accessible.description: root.error
                onAccepted: root.add()
            }

            FlowLayout {
                id: buttons

                x: entry.stacked ? 0 : entry.width - width
                y: entry.stacked ? field.height + 10 : (entry.height - height) / 2
                width: entry.stacked ? entry.width : entry.wanted
                spacing: 10

                PillButton {
                    id: add

                    objectName: "add"
                    kind: PillButton.Kind.Outline
                    enabled: field.text.trim() !== ""
                    text: qsTranslate("Texts", "Aggiungi")
                    onClicked: root.add()
                }

                PillButton {
                    id: defaults

                    objectName: "defaults"
                    kind: PillButton.Kind.Outline
                    text: qsTranslate("Texts", "Predefinite")
                    onClicked: root.model.restoreDefaultExcludes()
                }
            }
        }

        InlineMessage {
            objectName: "error"
            width: parent.width
            visible: text !== ""
            text: root.error
            color: Theme.coral
        }
    }

    SettingRow {
        objectName: "caches"
        width: parent.width
        title: qsTranslate("Texts",
                           "Escludi le cartelle di cache marcate con CACHEDIR.TAG")

        Switch {
            objectName: "switch"
            text: qsTranslate("Texts",
                              "Escludi le cartelle di cache marcate con CACHEDIR.TAG")
            checked: root.model.config.excludeCaches
            onAsked: checked => {
                const config = root.model.config;
                config.excludeCaches = checked;
                root.model.config = config;
            }
        }
    }
}
