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
}
