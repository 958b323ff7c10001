import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// The tooltip of a control. A long text, such as a path, wraps, and is cut where even that is too
// long.
T.ToolTip {
    id: tip

    delay: 600
    timeout: 8000
    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: -implicitHeight - 6
    margins: 6
    horizontalPadding: 9
    verticalPadding: 5
    implicitWidth: Math.min(420, Math.ceil(implicitContentWidth)) + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    contentItem: Label {
        text: tip.text
        font.pixelSize: 12
        wrapMode: Text.Wrap
        maximumLineCount: 8
        elide: Text.ElideRight
    }
    background: Surface {
        radius: 7
        fill: Theme.sidebarGradient
        rim: Theme.rim
        rimWidth: 1
        shadowColor: Theme.black(0.3)
        shadowRadius: 6
        shadowOffset: Qt.point(0, 3)
    }
}
