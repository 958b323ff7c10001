import QtQuick
import Vellomar.Design

Page {
    title: "Fields"
    subtitle: "Plain and secure, empty, filled, with the keyboard in it, disabled"

    Panel {
        title: "Text fields"

        FlowLayout {
            width: parent.width
            spacing: 16

            TextField { placeholderText: "Indirizzo del server" }
            TextField { name: "Server"; text: "nas.example.org" }
            TextField { name: "Server"; text: "nas.example.org"; ringed: true }
            TextField { name: "Server"; text: "nas.example.org"; enabled: false }
        }

        Row {
            spacing: 16

            SecureField { placeholderText: "Password" }
            SecureField { name: "Password"; text: "password" }
        }
    }
}
