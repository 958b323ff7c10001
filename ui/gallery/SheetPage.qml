import QtQuick
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Window

// The whole window with a sheet over it: the access sheet where an action waits for it, otherwise
// the recovery kit.
Item {
    id: root

    required property string prepared
    property int waiting: AppModel.GatedAction.None // an AppModel.GatedAction

    Component.onCompleted: {
        state.model.accessRequest = root.waiting;
        state.model.showingRecoveryKit = root.waiting === AppModel.GatedAction.None;
    }

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
