import QtQuick
import Vellomar.Design

// One page on its way in or out: it comes up from the lower edge out of nothing, and only fades
// when it goes.
Item {
    id: root

    property Item page: null // created as a child
    property real arrival: 1
    property real presence: 1

    function arrive() {
        if (!Motion.still) {
            arrival = 0;
            coming.start();
        }
    }

    function leave() {
        enabled = false;
        if (Motion.still) {
            visible = false;
            destroy();
        } else {
            going.start();
        }
    }

    opacity: Math.max(0, Math.min(1, arrival)) * Math.max(0, Math.min(1, presence))
    y: (1 - arrival) * height

    Spring {
        id: coming

        objectName: "coming"
        target: root
        property: "arrival"
        to: 1
        response: 0.5
        damping: 0.88
    }

    Spring {
        id: going

        objectName: "going"
        target: root
        property: "presence"
        to: 0
        response: 0.5
        damping: 0.88
        onFinished: root.destroy()
    }
}
