import QtQuick
import Vellomar.Design

// A section that has no page of its own.
Page {
    id: root

    required property string symbol

    EmptyState {
        width: parent ? parent.width : 0
        symbol: root.symbol
        title: qsTranslate("Texts", "Niente da mostrare")
        text: qsTranslate("Texts", "Questa pagina non fa parte di questa versione di Vellomar.")
    }
}
