import QtQuick
import Vellomar.Design

// The emblem of a section: huge, very faint, cut by the window's edge.
Item {
    id: root

    required property string symbol

    Symbol {
        objectName: "emblem"
        anchors.right: parent.right
        anchors.rightMargin: -210
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: 60
        name: root.symbol
        points: 520
        weight: Font.Bold
        color: Theme.white(0.035)
    }
}
