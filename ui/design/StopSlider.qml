pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Vellomar.Design

// A choice of a few options in order: a slider with a stop for each. It shows the selection that it
// is bound to and asks for a different one by chosen(). A selection that is no option is shown at
// the first stop.
T.Slider {
    id: control

    // A list of {value, label}.
    required property var options
    required property var selection
    required property string name
    property bool ringed: visualFocus
    // A disabled slider fades as a whole: the part of the rail under the thumb isn't drawn.
    readonly property rect covered: enabled ? Qt.rect(0, 0, 0, 0) : Qt.rect(centre - 11, -8, 22, 22)

    signal chosen(value: var)

    readonly property int index: Math.max(0, options.findIndex(o => o.value === selection))
    readonly property real stepWidth: options.length > 0 ? availableWidth / options.length : 0

    // `value` follows the selection. Only a screen reader changes it otherwise.
    property bool following: false

    function follow() {
        following = true;
        to = Math.max(1, options.length - 1);
        value = index;
        following = false;
    }

    from: 0
    stepSize: 1
    onIndexChanged: follow()
    onOptionsChanged: follow()
    onValueChanged: {
        if (!following && value !== index) {
            const wanted = Math.round(value);
            follow();
            choose(wanted);
        }
    }

    // Asks for the option at a stop, unless it is selected already. Screen readers also reach
    // disabled sliders.
    function choose(stop: int) {
        if (enabled && stop >= 0 && stop < options.length && options[stop].value !== selection) {
            chosen(options[stop].value);
        }
    }

    // The stop at a position along the track.
    function stopAt(x: real): int {
        if (stepWidth <= 0) {
            return 0;
        }
        return Math.max(0, Math.min(options.length - 1, Math.trunc(x / stepWidth)));
    }

    // Position of the thumb's centre; it moves as a spring.
    property real centre: (index + 0.5) * stepWidth
    property bool settled: false

    Component.onCompleted: {
        follow();
        settled = true;
    }

    Behavior on centre {
        enabled: control.settled
        Spring {
            response: 0.3
            damping: 0.8
        }
    }

    focusPolicy: Qt.TabFocus
    implicitWidth: 320
    implicitHeight: implicitContentHeight
    opacity: enabled ? 1 : 0.38

    Keys.onLeftPressed: choose(index - 1)
    Keys.onDownPressed: choose(index - 1)
    Keys.onRightPressed: choose(index + 1)
    Keys.onUpPressed: choose(index + 1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            choose(event.key === Qt.Key_Home ? 0 : options.length - 1);
            event.accepted = true;
        }
    }
    Accessible.role: Accessible.Slider
    Accessible.name: index < options.length
                     ? qsTranslate("Texts", "%1: %2").arg(name).arg(options[index].label)
                     : name
    Accessible.onIncreaseAction: control.choose(control.index + 1)
    Accessible.onDecreaseAction: control.choose(control.index - 1)

    // Above the content, so that a press on a label works as one on the track.
    MouseArea {
        anchors.fill: parent
        z: 1
        preventStealing: true
        onPressed: mouse => control.choose(control.stopAt(mouse.x))
        onPositionChanged: mouse => control.choose(control.stopAt(mouse.x))
    }

    contentItem: Column {
        spacing: 9

        Item {
            objectName: "track"
            width: parent.width
            height: 24

            Surface {
                objectName: "rail"
                hole: control.covered
                y: 9
                width: parent.width
                height: 6
                radius: 3
                fill: Theme.flat(Theme.black(0.3))
            }

            Surface {
                objectName: "passed"
                hole: control.covered
                y: 9
                width: Math.max(6, Math.min(parent.width, control.centre))
                height: 6
                radius: 3
                fill: Theme.amberGradient
            }

            Repeater {
                model: control.options.length

                Surface {
                    required property int index

                    visible: control.enabled || index !== control.index
                    x: (index + 0.5) * control.stepWidth - 2
                    y: 10
                    width: 4
                    height: 4
                    radius: 2
                    fill: Theme.flat(index <= control.index ? Theme.faded(Theme.ink, 0.55)
                                                            : Theme.white(0.32))
                }
            }

            Surface {
                objectName: "thumb"
                x: control.centre - 11
                y: 1
                width: 22
                height: 22
                radius: 11
                fill: Theme.knobGradient
                rim: Theme.flat(Theme.amber)
                rimWidth: 2
                shadowColor: Theme.black(0.4)
                shadowRadius: 3
                shadowOffset: Qt.point(0, 2)

                FocusRing {
                    shown: control.ringed
                    around: 11
                }
            }
        }

        Row {
            Repeater {
                model: control.options

                StopLabel {
                    required property var modelData
                    required property int index

                    width: control.stepWidth
                    text: modelData.label
                    current: index === control.index
                }
            }
        }
    }
}
