import QtQuick
import Vellomar.Design

Page {
    title: "Fields"
    subtitle: "Plain and secure, empty, filled, focused, disabled"

    Panel {
        title: "Text fields"

        FlowLayout {
            width: parent.width
            spacing: 16

            TextField { placeholderText: "Indirizzo del server" }
            TextField { name: "Server"; text: "nas.example.org" }
            TextField { name: "Server"; text: "nas.example.org"; ringed: true }
            TextField { name: "Server"; text: "nas.example.org"; enabled: false }
            SecureField { placeholderText: "Password" }
            SecureField { name: "Password"; text: "password" }
            SecureField { name: "Password"; text: "password"; revealing: true }
        }
    }

    Panel {
        title: "Labelled fields"

        FlowLayout {
            width: parent.width
            spacing: 16

            LabelledField { label: "Indirizzo"; placeholderText: "nas.example.org" }
            LabelledField { label: "Indirizzo"; text: "nas.example.org"; ringed: true }
            LabelledField { label: "Password"; text: "password"; secure: true }
            LabelledField { label: "Porta"; text: "22"; enabled: false }
        }
    }

    Panel {
        title: "Keys"

        FlowLayout {
            width: parent.width
            spacing: 16

            KeyField { name: "Chiave di cifratura"; key: "b7KQ-9fTz-XW3m-Lp4s" }
            KeyField { name: "Chiave di cifratura"; key: "b7KQ-9fTz-XW3m-Lp4s"; revealed: true }
            KeyField {
                name: "Chiave di cifratura"
                key: "b7KQ-9fTz-XW3m-Lp4s"
                revealed: true
                ringed: true
                Component.onCompleted: select(5, 14)
            }
            KeyField { name: "Chiave di cifratura"; key: "b7KQ-9fTz"; enabled: false }
        }
    }
}
