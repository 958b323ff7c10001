import QtQuick
import Vellomar.Design

// A page that comes or goes: it comes from the lower edge while it fades in, and goes by fading
// out.
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
