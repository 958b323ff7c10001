import QtQuick
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Sheets

// The two sheets as the window has them, on one model.
Item {
    readonly property alias prepared: prepared
    readonly property AppModel model: prepared.model
    readonly property alias kit: kit
    readonly property alias access: access
    property alias state: prepared.state

    anchors.fill: parent

    PreparedModel { id: prepared; state: "kit" }
    RecoveryKitSheet { id: kit; model: prepared.model }
    AccessSheet { id: access; model: prepared.model }
}
