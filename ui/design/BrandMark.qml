import QtQuick
import Vellomar.Design

// The product's mark: three quarters of a ring of hours, and a clock hand.
Item {
    implicitWidth: 26
    implicitHeight: 26

    TickRing {
        anchors.fill: parent
        count: 12
        length: 0.24
        thickness: 0.13
        shines: index => index < 9
    }

    ClockHand {
        anchors.fill: parent
    }
}
