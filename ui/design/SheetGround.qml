import QtQuick
import Vellomar.Design

// The background of a sheet.
Surface {
    radius: 14
    continuous: true
    fill: Theme.groundGradient
    rim: Theme.rim
    rimWidth: 1
    shadowColor: Theme.black(0.4)
    shadowRadius: 20
    shadowOffset: Qt.point(0, 10)
}
