import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Glance

// What the backups will weigh.
Panel {
    id: root

    required property AppModel model
    required property DestinationsSummary summary
    readonly property Measurement measurement: model.sources.measurement

    function measure() {
        // Until the program has come up, the access to the disk hasn't been tried.
        if (model.starting) {
            model.checkPermissions();
        }
        if (!measurement.measuring) {
            model.runMeasure();
        }
    }

    title: qsTranslate("Texts", "Spazio necessario")

    FlowLayout {
        id: figures

        readonly property real half: (width - spacing) / 2

        width: parent.width
        spacing: 24

        SpaceFigure {
            objectName: "firstBackup"
            width: figures.half >= 200 ? figures.half : figures.width
            figure: root.summary.firstBackup
        }

        SpaceFigure {
            objectName: "allVersions"
            width: figures.half >= 200 ? figures.half : figures.width
            visible: root.summary.hasVersions
            figure: root.summary.versions
        }
    }

    PillButton {
        objectName: "measure"
        kind: PillButton.Kind.Outline
        text: root.summary.measureLabel
        enabled: !root.measurement.measuring
        onClicked: root.measure()
    }
}
