import QtQuick
import Vellomar.Design

Item {
    SheetSurface {
        anchors.centerIn: parent
        width: 460

        Row {
            width: parent.width
            spacing: 14

            GlyphWell { id: well; symbol: "lock.open" }

            PageHeader {
                width: parent.width - well.width - close.width - 28
                title: "Kit di recupero"
                subtitle: "Da conservare fuori da questo computer"
            }

            IconButton { id: close; symbol: "xmark"; help: "Chiudi" }
        }

        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: "I backup sono cifrati con questa chiave."
        }

        Row {
            spacing: 10

            CheckBox { text: "Ho messo la chiave in un posto sicuro"; checked: true }
            Label { text: "Ho messo la chiave in un posto sicuro" }
        }

        PillButton { text: "Continua" }
    }
}
