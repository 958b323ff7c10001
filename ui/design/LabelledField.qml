import QtQuick
import Vellomar.Design

// A field of one line with its label above. edited() reports what the user types, and nothing else.
Item {
    id: root

    required property string label
    property alias text: input.text
    property alias placeholderText: input.placeholderText
    property alias secure: input.secure
    property alias digitsOnly: input.digitsOnly
    property alias readOnly: input.readOnly
    property alias ringed: input.ringed
    readonly property alias field: input

    signal edited(text: string)
    signal accepted // by Return

    implicitWidth: input.implicitWidth
    implicitHeight: caption.height + 6 + input.height

    Label {
        id: caption

        width: parent.width
        text: root.label
        font.pixelSize: 12
        color: Theme.secondary
        opacity: input.opacity
        elide: Text.ElideRight
        Accessible.ignored: true // it is the field's name

        MouseArea {
            anchors.fill: parent
            onClicked: input.forceActiveFocus(Qt.MouseFocusReason)
        }
    }

    TextField {
        id: input

        y: caption.height + 6
        width: parent.width
        name: root.label
        onTyped: text => root.edited(text)
        onAccepted: root.accepted()
    }
}
