import QtQuick
import QtQuick.Templates as T

// The presses that Qt's templates of buttons don't handle: by Return, once however long it is held,
// and by a screen reader, which also finds disabled buttons.
QtObject {
    id: root

    required property T.AbstractButton button

    function press(repeated: bool) {
        if (button.enabled && !repeated) {
            button.clicked();
        }
    }

    readonly property Connections keys: Connections {
        target: root.button.Keys

        function onReturnPressed(event) {
            root.press(event.isAutoRepeat);
        }
        function onEnterPressed(event) {
            root.press(event.isAutoRepeat);
        }
    }

    readonly property Connections reader: Connections {
        target: root.button.Accessible

        function onPressAction() {
            root.press(false);
        }
        function onToggleAction() {
            root.press(false);
        }
    }
}
