import QtQuick
import Vellomar.Design
import Vellomar.Glance

// The state of a destination; a click opens the page of the destinations.
Pressable {
    id: control

    required property AppModel model
    required property destinationState destination

    readonly property bool counted: destination.known && destination.error === ""
                                    && destination.enabled
    readonly property string unit: qsTranslate("Texts", "versioni", "", destination.snapshotCount)

    ringRadius: 14
    implicitHeight: content.height + 22
    text: destination.title
    onClicked: model.section = AppModel.Section.Destinations

    Accessible.name: qsTranslate("Texts", "%1: %2").arg(text).arg(destination.stateText)
    Accessible.description: counted ? qsTranslate("Texts", "%n versioni", "", destination.snapshotCount)
                                    : ""

    background: Raised {
        lifted: control.hovering
    }

    Item {
        id: content

        x: 14
        y: 11
        width: control.width - 28
        height: Math.max(well.height, texts.height, versions.height)

        DestinationSymbol {
            id: well

            objectName: "well"
            anchors.verticalCenter: parent.verticalCenter
            destination: control.destination.id
        }

        Column {
            id: texts

            anchors.verticalCenter: parent.verticalCenter
            x: well.width + 12
            width: Math.max(0, trailing.x - 12 - x)
            spacing: 4

            OneLine {
                objectName: "title"
                width: parent.width
                line: control.text
                font.pixelSize: 14
                font.weight: Font.DemiBold
            }

            ToneDot {
                objectName: "state"
                width: parent.width
                text: control.destination.stateText
                tone: control.destination.stateTone
                Accessible.ignored: true
            }
        }

        Item {
            id: trailing

            x: content.width - width
            width: control.counted ? versions.width : chevron.width
            height: content.height

            Column {
                id: versions

                objectName: "versions"
                anchors.verticalCenter: parent.verticalCenter
                visible: control.counted

                Digits {
                    objectName: "count"
                    anchors.right: parent.right
                    text: control.destination.snapshotCount
                    font: Qt.font({family: Theme.textFamily, pixelSize: 17, weight: Font.DemiBold})
                    Accessible.ignored: true
                }

                Label {
                    objectName: "unit"
                    anchors.right: parent.right
                    text: control.unit
                    font.pixelSize: 11
                    color: Theme.secondary
                    Accessible.ignored: true
                }
            }

            Symbol {
                id: chevron

                objectName: "chevron"
                anchors.verticalCenter: parent.verticalCenter
                visible: !control.counted
                name: "chevron.right"
                points: 11
                weight: Font.DemiBold
                color: Theme.tertiary
            }
        }
    }
}
