import QtQuick
import Vellomar.Design

// A ring of ticks; shines tells of each index whether that tick is lit, and is asked again whenever
// something that it reads changes.
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
