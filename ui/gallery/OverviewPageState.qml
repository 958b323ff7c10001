import QtQuick
import Vellomar.Glance
import Vellomar.Overview
import Vellomar.Prepared

// The overview in one of the prepared states.
Item {
    id: root

    required property string prepared

    PreparedModel {
        id: source

        state: root.prepared
    }

    Summary {
        id: summed

        model: source.model
    }

    OverviewPage {
        anchors.fill: parent
        model: source.model
        summary: summed
    }
}
