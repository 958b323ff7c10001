pragma ComponentBehavior: Bound
import QtQuick
import Vellomar.Design
import Vellomar.Testing

// Boxes that wrap like words.
Item {
    id: root

    width: 400
    height: 200

    Component {
        id: flow
        FlowLayout {
            id: layout

            property var boxes: []

            spacing: 8

            Repeater {
                model: layout.boxes

                Item {
                    required property var modelData

                    implicitWidth: modelData[0]
                    implicitHeight: modelData[1]
                }
            }
        }
    }

    Case {
        name: "Flow"

        // The places of the boxes in a width, and the room that they ask for.
        function flows(boxes, width, places, room) {
            const given = width === undefined ? {boxes: boxes} : {boxes: boxes, width: width};
            const item = drawn(flow, given);
            compare(boxes.map((box, i) => [item.children[i].x, item.children[i].y]), places);
            compare([item.implicitWidth, item.implicitHeight], room);
            compare(boxes.map((box, i) => [item.children[i].width, item.children[i].height]), boxes);
        }

        function test_boxesWrapLikeWords() {
            flows([[40, 10], [50, 20], [30, 10], [20, 15]], 100,
                  [[0, 0], [48, 0], [0, 28], [38, 28]], [98, 43]);
        }

        function test_aBoxThatJustFitsStaysInItsLine() {
            flows([[40, 10], [52, 10]], 100, [[0, 0], [48, 0]], [100, 10]);
            flows([[40, 10], [52.5, 10]], 100, [[0, 0], [0, 18]], [52.5, 28]);
        }

        function test_aBoxWiderThanTheSpaceStandsAloneFromTheVeryBeginning() {
            flows([[150, 10], [20, 12]], 100, [[0, 0], [0, 18]], [150, 30]);
            flows([[20, 10], [150, 10], [20, 12]], 100, [[0, 0], [0, 18], [0, 36]], [150, 48]);
        }

        function test_withNoLimitThereIsOneLine() {
            flows([[150, 10], [2000, 12], [30, 4]], undefined, [[0, 0], [158, 0], [2166, 0]],
                  [2196, 12]);
        }

        function test_nothingTakesNoRoom() {
            flows([], 100, [], [0, 0]);
        }
    }
}
