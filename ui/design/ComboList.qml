import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// The list of a Combo, which passes the keys to it. Arrows, Home, End and the page keys move, typed
// letters go to the next entry that begins with them, Return and Space choose, Escape closes.
T.Popup {
    id: list

    required property var options // as the combo's
    required property int index // the entry to open at; -1 for the first
    required property string name
    property string typed: "" // letters since the last pause, in lower case
    property alias pause: forget.interval // that ends them, in milliseconds
    readonly property ComboView view: contentItem as ComboView
    readonly property int current: view.currentIndex

    signal chosen(at: int)

    // Whether a key types a character other than a space.
    function isTyped(event: var): bool {
        const held = event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier);
        return held === 0 && event.text > " " && event.text !== "\u007f";
    }

    // Goes to the next entry that begins with what has been typed. One letter typed several times
    // goes through the entries that begin with it.
    function type(letters: string) {
        typed += letters.toLowerCase();
        forget.restart();
        const same = Array.from(typed).every(letter => letter === typed[0]);
        const start = same ? typed[0] : typed;
        const first = same ? current + 1 : current;
        for (let i = 0; i < options.length; ++i) {
            const at = (first + i) % options.length;
            if (options[at].label.toLowerCase().startsWith(start)) {
                view.currentIndex = at;
                return;
            }
        }
    }

    // Accepts every key but Tab: that moves the focus away, which closes the list.
    function handle(event: var) {
        const page = Math.max(1, Math.floor(view.height / view.rowHeight) - 1);
        const steps = {
            [Qt.Key_Up]: -1,
            [Qt.Key_Down]: 1,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_PageDown]: page,
            [Qt.Key_Home]: -options.length,
            [Qt.Key_End]: options.length
        };
        const blank = event.key === Qt.Key_Space;
        event.accepted = event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab;
        if (event.key === Qt.Key_Escape) {
            close();
        } else if (steps[event.key] !== undefined) {
            view.currentIndex = Math.max(0, Math.min(options.length - 1,
                                                     current + steps[event.key]));
        } else if (isTyped(event) || (blank && typed !== "")) {
            type(event.text);
        } else if (blank || event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            if (!event.isAutoRepeat) {
                chosen(current);
            }
        }
    }

    height: Math.min(implicitHeight, 300, (parent?.Window.height ?? 0) - topMargin - bottomMargin)
    implicitHeight: view.contentHeight + topPadding + bottomPadding
    margins: 8
    padding: 5
    closePolicy: T.Popup.CloseOnPressOutsideParent
    onAboutToShow: {
        typed = "";
        view.fill(Math.max(0, index));
    }
    onVisibleChanged: {
        if (visible && options.length === 0) {
            close(); // the template opens it with no options too
        }
    }
    onClosed: view.empty()

    enter: Transition {
        Ease { property: "opacity"; from: 0; to: 1; time: 100 }
    }
    exit: Transition {
        Ease { property: "opacity"; to: 0; time: 100 }
    }

    Timer {
        id: forget

        interval: 1000
        onTriggered: list.typed = ""
    }

    contentItem: ComboView {
        options: list.options
        name: list.name
        onChosen: at => list.chosen(at)
    }

    background: Surface {
        radius: 10
        continuous: true
        fill: Theme.groundGradient
        rim: Theme.rim
        rimWidth: 1
        shadowColor: Theme.black(0.4)
        shadowRadius: 14
        shadowOffset: Qt.point(0, 6)
    }
}
