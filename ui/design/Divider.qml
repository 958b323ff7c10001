import QtQuick
import Vellomar.Design

// A line between rows.
Rectangle {
    width: parent ? parent.width : 0
    height: 1
    color: Theme.line
}
