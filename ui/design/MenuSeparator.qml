import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A line between groups of menu items.
T.MenuSeparator {
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 10
    verticalPadding: 5
    Accessible.role: Accessible.Separator

    contentItem: Rectangle {
        implicitHeight: 1
        color: Theme.line
    }
}
