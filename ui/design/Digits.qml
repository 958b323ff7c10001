pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design

// One line of text. If steady, all digits have the same width, so that a number that changes
// doesn't jump. Where there is less room, the text shrinks, at most to minimumScale.
Item {
    id: root

    required property string text
    property font font: Qt.font({family: Theme.textFamily, pixelSize: 15, weight: Font.DemiBold})
    property color color: Theme.text
    property real minimumScale: 1
    property bool steady: true
    // Space between the item's top and the top of a digit, and between a digit's foot and the
    // bottom.
    readonly property real above: metrics.ascent + metrics.tightBoundingRect("0").y
    readonly property real below: metrics.descent

    // The zero's width, unless some digit's ink is wider. The largest advance would be too much:
    // one digit with wide margins would space out all others.
    readonly property real digitWidth: {
        let widest = metrics.advanceWidth("0");
        for (const digit of "123456789") {
            widest = Math.max(widest, metrics.tightBoundingRect(digit).width);
        }
        return widest;
    }

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    FontMetrics {
        id: metrics
        font: root.font
    }

    Row {
        id: row

        anchors.centerIn: parent
        scale: implicitWidth > root.width && implicitWidth > 0
               ? Math.max(root.minimumScale, root.width / implicitWidth) : 1

        Repeater {
            model: root.steady ? Array.from(root.text) : [root.text]

            Label {
                required property string modelData

                text: modelData
                font: root.font
                color: root.color
                width: root.steady && modelData >= "0" && modelData <= "9" ? root.digitWidth
                                                                           : implicitWidth
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true
            }
        }
    }
}
