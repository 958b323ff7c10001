import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Glance

// Where the backups go: what they need, and a panel for each destination.
Page {
    id: root

    required property AppModel model
    readonly property bool inSight: Window.visibility !== Window.Hidden
                                    && Window.visibility !== Window.Minimized
    property bool made: false

    function appear() {
        if (made && inSight) {
            model.refreshQuota();
        }
    }

    title: model.title(AppModel.Section.Destinations)
    subtitle: qsTranslate("Texts", "I backup sono indipendenti e cifrati. Se una destinazione non è raggiungibile, le altre partono lo stesso.")
    onInSightChanged: appear()
    Component.onCompleted: {
        made = true;
        appear();
    }

    DestinationsSummary {
        id: summed

        model: root.model
    }

    SpaceNeededPanel {
        objectName: "space"
        model: root.model
        summary: summed
    }

    LocalDestinationPanel {
        objectName: "local"
        model: root.model
        summary: summed
    }

    DriveDestinationPanel {
        objectName: "drive"
        model: root.model
        summary: summed
    }

    ServerDestinationPanel {
        objectName: "server"
        model: root.model
        summary: summed
    }
}
