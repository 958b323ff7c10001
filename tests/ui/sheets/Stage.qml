import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Sheets

// The kit sheet over a window with one button.
Item {
    id: root

    required property AppModel model
    readonly property alias sheet: sheet

    Component.onCompleted: Motion.still = true

    PillButton {
        objectName: "behind"
        text: "Esegui backup ora"
        onClicked: root.model.startBackup()
    }

    RecoveryKitSheet {
        id: sheet

        model: root.model
    }
}
