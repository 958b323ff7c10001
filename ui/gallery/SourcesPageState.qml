import QtQuick
import Vellomar.Prepared
import Vellomar.Sources

// The page of the sources in one of the prepared states.
Item {
    id: root

    required property string prepared
    property string typed: "" // as an exclusion, and asked to be added
    property bool dragged: false // something is held over the page
    property bool ended: false // scrolled to its end

    PreparedModel {
        id: source

        state: root.prepared
    }

    SourcesPage {
        id: page

        anchors.fill: parent
        model: source.model
        target.shown: root.dragged
        contentY: root.ended ? Math.max(0, contentHeight - height) : 0

        Component.onCompleted: {
            exclusions.field.text = root.typed;
            exclusions.add();
        }
    }
}
