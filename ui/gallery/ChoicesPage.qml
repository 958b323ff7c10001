pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    id: page

    function numbered(labels: var): var {
        return labels.map((label, index) => ({value: index, label: label}));
    }

    title: "Choices"
    subtitle: "Switches, boxes, segments and stops"

    Panel {
        title: "Switches and boxes"

        Row {
            spacing: 22

            Switch { text: "off"; onAsked: on => checked = on }
            Switch { text: "on"; checked: true; onAsked: on => checked = on }
            Switch { text: "focus"; checked: true; ringed: true }
            Switch { text: "disabled"; enabled: false }
            Switch { text: "disabled"; checked: true; enabled: false }
            CheckBox { text: "off"; onAsked: on => checked = on }
            CheckBox { text: "on"; checked: true; onAsked: on => checked = on }
            CheckBox { text: "focus"; checked: true; ringed: true }
            CheckBox { text: "disabled"; checked: true; enabled: false }
        }

        CheckRow {
            width: parent.width
            text: "Ho messo la chiave in un posto sicuro, fuori da questo Mac"
            checked: false
            onAsked: on => checked = on
        }

        CheckRow {
            width: parent.width
            text: "disabled"
            checked: true
            enabled: false
        }
    }

    Panel {
        title: "Segments"

        Row {
            spacing: 22

            Segmented {
                name: "Licenza"
                options: [{value: "restic", label: "restic"}, {value: "rclone", label: "rclone"}]
                selection: "restic"
                onChosen: value => selection = value
            }

            Segmented {
                name: "Ogni quante ore"
                enabled: false
                options: page.numbered(["1 h", "3 h", "6 h", "12 h"])
                selection: 2
            }
        }

        Row {
            spacing: 22

            Repeater {
                model: [260, 200, 120]

                Segmented {
                    required property int modelData

                    width: modelData
                    name: "narrow"
                    options: page.numbered(["1 h", "Ogni sei ore", "Una volta al giorno"])
                    selection: 1
                    onChosen: value => selection = value
                }
            }
        }
    }

    Panel {
        title: "Stops"

        StopSlider {
            width: parent.width
            name: "Conserva"
            options: page.numbered(["Solo l'ultimo", "1 mese", "3 mesi", "1 anno", "Per sempre"])
            selection: 2
            onChosen: value => selection = value
        }

        StopSlider {
            width: parent.width
            name: "Conserva"
            ringed: true
            options: page.numbered(["Nessuno", "Primo", "Secondo"])
            selection: "no option"
            onChosen: value => selection = value
        }
    }
}
