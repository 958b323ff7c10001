import QtQuick
import Vellomar.Glance
import Vellomar.Prepared
import Vellomar.Window

// The whole window with a sheet over it: the access sheet where an action waits for it, otherwise
// the recovery kit.
Item {
    id: root

    required property string prepared
    property int waiting: DiskAccess.GatedAction.None // a DiskAccess.GatedAction

    Component.onCompleted: {
        state.model.access.request = root.waiting;
        state.model.kit.showing = root.waiting === DiskAccess.GatedAction.None;
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
