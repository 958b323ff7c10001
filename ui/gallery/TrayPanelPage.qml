import QtQuick
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Window

// The panel of the tray item.
Item {
    id: root

    required property string prepared

    PreparedModel {
        id: state

        state: root.prepared
    }

    MenuPanel {
        anchors.centerIn: parent
        width: implicitWidth
        height: implicitHeight
        model: state.model
        summary: Summary {
            model: state.model
        }
    }
}
