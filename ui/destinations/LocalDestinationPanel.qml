import QtQuick
import Vellomar.Design
import Vellomar.Destinations
import Vellomar.Glance

// The disk, or folder, of the local backups.
Panel {
    id: root

    required property AppModel model
    required property DestinationsSummary summary
    readonly property place place: summary.local

    Accessible.name: place.title

    DestinationHeader {
        objectName: "header"
        width: parent.width
        place: root.place
        onAsked: enabled => {
            root.model.config.localEnabled = enabled;
            root.model.refresh(DestinationID.Local);
        }
    }

    UsageBar {
        objectName: "usage"
        width: parent.width
        visible: root.place.hasUsage
        used: root.place.used
        total: root.place.total
        words: root.place.usageText
    }

    StatusDot {
        objectName: "away"
        width: parent.width
        visible: root.summary.diskAway
        text: qsTranslate("Texts", "Disco non collegato")
        color: Theme.coral
    }

    Caution {
        objectName: "sameDisk"
        width: parent.width
        visible: root.model.localFolder.onSystemDisk
        text: qsTranslate("Texts", "Questa cartella è sullo stesso disco del Mac: se il disco si rompe perdi i file e il backup insieme. Meglio un disco esterno.")
    }

    PlaceMetrics {
        objectName: "metrics"
        width: parent.width
        place: root.place
        action: root.place.canEnable ? qsTranslate("Texts", "Cambia")
                                      : qsTranslate("Texts", "Scegli disco o cartella")
        onActed: root.model.chooseLocalFolder()
    }

    ForecastLine {
        objectName: "forecast"
        width: parent.width
        forecast: root.place.forecast
    }
}
