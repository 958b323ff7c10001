import QtQuick
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Window

// The whole window with one of its sections open.
Item {
    id: root

    required property string prepared
    required property int section

    Component.onCompleted: state.model.section = section

    PreparedModel {
        id: state

        state: root.prepared
    }

    RootView {
        anchors.fill: parent
        model: state.model
        summary: Summary {
            model: state.model
        }
    }
}
