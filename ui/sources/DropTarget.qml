import QtQuick
import Vellomar.Design

// Takes what is dropped on it from the file manager, and shows that it would. Files are only named
// by that: whoever dragged them keeps them.
DropArea {
    id: root

    property bool shown: containsDrag // can be set, to see it in that state

    signal taken(urls: var) // a list of url

    onEntered: drag => {
        if (drag.hasUrls) {
            drag.accept(Qt.CopyAction);
        } else {
            drag.accepted = false;
        }
    }
    onPositionChanged: drag => drag.accept(Qt.CopyAction)
    onDropped: drop => {
        drop.accept(Qt.CopyAction);
        root.taken(drop.urls);
    }

    Surface {
        objectName: "frame"
        anchors.fill: parent
        anchors.margins: 10
        visible: root.shown
        radius: 14
        continuous: true
        fill: Theme.flat(Theme.faded(Theme.amber, 0.08))
        rim: Theme.flat(Theme.amber)
        rimWidth: 2

        Surface {
            anchors.horizontalCenter: parent.horizontalCenter
            y: parent.height - height - 20
            width: Math.ceil(words.width) + 40
            height: Math.ceil(words.height) + 20
            radius: height / 2
            fill: Theme.amberGradient
            shadowColor: Theme.black(0.32)
            shadowRadius: 8
            shadowOffset: Qt.point(0, 3)

            Paragraph {
                id: words

                objectName: "words"
                anchors.centerIn: parent
                width: Math.min(implicitWidth, room)
                room: root.width - 80
                words: qsTranslate("Texts", "Rilascia qui le cartelle da salvare")
                font.weight: Font.DemiBold
                color: Theme.ink
                horizontalAlignment: Text.AlignHCenter
            }
        }
    }
}
