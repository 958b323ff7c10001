import QtQuick
import Vellomar.Design
import Vellomar.Glance
import Vellomar.Sources

// What goes into the backup: the folders, what is left out of them, and what it all weighs.
Page {
    id: root

    required property AppModel model
    readonly property alias exclusions: exclusions
    readonly property alias target: target

    title: model.title(AppModel.Section.Sources)
    subtitle: qsTranslate("Texts", "Cartelle incluse nel backup")
    // Who comes back finds no word on what was dropped long ago.
    Component.onDestruction: model?.sources.forgetRefusals()

    SourcesView {
        id: view

        model: root.model
    }

    FoldersPanel {
        id: folders

        objectName: "folders"
        model: root.model
        view: view
    }

    ExclusionsPanel {
        id: exclusions

        objectName: "exclusions"
        model: root.model
        view: view
    }

    DropTarget {
        id: target

        // What was dropped is looked at for a moment before it is taken or refused.
        property bool awaited: false

        function show() {
            if (awaited) {
                awaited = false;
                laidOut.start();
            }
        }

        objectName: "target"
        parent: root // it doesn't scroll
        anchors.fill: parent
        onTaken: urls => {
            awaited = true;
            root.model.addDroppedSources(urls);
        }
    }

    Timer {
        id: laidOut

        interval: 0
        onTriggered: root.reveal(folders.outcome)
    }

    Connections {
        target: view.folders

        function onCountChanged() {
            target.show();
        }
    }

    Connections {
        target: root.model.sources

        function onRefusalChanged() {
            target.show();
        }
    }
}
