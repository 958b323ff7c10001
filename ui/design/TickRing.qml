import QtQuick
import Vellomar.Design

// A ring of ticks. shines(index) says whether a tick is lit; it is called again whenever a property
// that it reads changes.
TickRingItem {
    id: root

    property var shines: index => false

    lit: {
        const ticks = [];
        for (let i = 0; i < count; ++i) {
            ticks.push(shines(i) === true);
        }
        return ticks;
    }
    Accessible.ignored: true
}
