import QtQuick
import Vellomar.Design

// The question before an action that can't be undone.
Item {
    ConfirmationDialog {
        visible: true
        title: "Scollegare Google Drive?"
        message: "I backup su Drive si fermano. Quelli già fatti restano su Drive e tornano disponibili ricollegando lo stesso account."
        action: "Scollega"
        refusal: "Annulla"
    }
}
