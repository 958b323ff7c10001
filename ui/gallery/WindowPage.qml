import QtQuick
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Window

// The whole window at one of its sections.
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
