pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

Page {
    id: page

    function hours(): var {
        return [{value: 1, label: "1 ora"}, {value: 2, label: "2 ore"}, {value: 4, label: "4 ore"},
            {value: 6, label: "6 ore"}, {value: 12, label: "12 ore"}, {value: 24, label: "24 ore"}];
    }

    title: "Rows"
    subtitle: "Settings with their controls, in the width that they have and in less"

    Panel {
        title: "Setting rows"

        SettingRow {
            width: parent.width
            title: "Backup automatico"
            subtitle: "Anche con l'app chiusa"

            Switch { text: "Backup automatico"; checked: true }
        }

        Divider {}

        SettingRow {
            width: parent.width
            title: "Un backup ogni"

            Segmented { name: "Un backup ogni"; options: page.hours(); selection: 4 }
        }

        Divider {}

        SettingRow {
            width: parent.width
            enabled: false
            title: "Solo con l'alimentatore collegato"
            subtitle: "A batteria i backup automatici vengono rimandati"

            Switch { text: "Solo con l'alimentatore collegato" }
        }

        Divider {}

        SettingRow {
            width: parent.width
            title: "Accesso completo al disco"
            subtitle: "Non concesso: Mail, Safari e Messaggi non vengono salvati"

            Row {
                spacing: 10

                PillButton { kind: PillButton.Kind.Outline; text: "Apri Impostazioni di Sistema" }
                PillButton { kind: PillButton.Kind.Outline; text: "Verifica" }
            }
        }
    }

    Panel {
        width: 420
        title: "Narrow"

        SettingRow {
            width: parent.width
            title: "Kit di recupero"
            subtitle: "Da conservare fuori da questo Mac"

            PillButton { kind: PillButton.Kind.Outline; text: "Apri" }
        }

        Divider {}

        SettingRow {
            width: parent.width
            title: "Un backup ogni"

            Segmented { name: "Un backup ogni"; options: page.hours(); selection: 4 }
        }
    }
}
