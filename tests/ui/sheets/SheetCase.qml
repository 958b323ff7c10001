import QtQuick
import Vellomar.Glance
import Vellomar.Testing

// What the tests of the sheets have in common.
Case {
    id: root

    property Component scene: Component { SheetsScene {} }

    // The two sheets, neither of them open, on a model in a state.
    function made(state) {
        const item = createTemporaryObject(scene, stage, {state: state ?? "kit"});
        item.prepared.takeAsked();
        return item;
    }

    // Opens one of the two by what the model says.
    function raise(item, sheet, action) {
        if (sheet === item.kit) {
            item.model.kit.showing = true;
        } else {
            item.model.access.request = action ?? DiskAccess.GatedAction.Measure;
        }
        tryCompare(sheet, "opened", true);
        settle();
    }

    // Has everything laid out and drawn as it is now.
    function settle() {
        Eye.look(stage);
    }
}
