import QtQuick
import Vellomar.Design

// A question before a step that can't be taken back.
Item {
    ConfirmationDialog {
        visible: true
        title: "Scollegare Google Drive?"
        message: "I backup su Drive si fermano. Quelli già fatti restano su Drive e tornano disponibili ricollegando lo stesso account."
        action: "Scollega"
        refusal: "Annulla"
    }
}
