import QtQuick
import Vellomar.Design
import Vellomar.Sources
import Vellomar.Testing

// What shows that folders can be dropped, and takes them.
Item {
    id: root

    width: 760
    height: 400
    Accessible.role: Accessible.Pane
    Accessible.name: "Cartelle"

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0.2, 0.2, 0.2, 1)
    }

    Component {
        id: target
        DropTarget {
            property var got: []

            width: 740
            height: 380
            onTaken: urls => got.push(Array.from(urls).map(String))
        }
    }

    Case {
        name: "Drop"

        readonly property var folders: ["file:///srv/foto", "file:///srv/una%0Ariga"]

        function test_filesThatAreDraggedOverItShowIt() {
            const item = drawn(target);
            const frame = part(item, "frame");
            verify(!frame.visible);
            verify(FileManager.drag(item, 300, 100, folders));
            verify(frame.visible);
            verify(FileManager.dragOn(item, 20, 370));
            verify(frame.visible);
            FileManager.leave(item);
            verify(!frame.visible);
            compare(item.got, []);
        }

        function test_whatIsDroppedIsCopiedAndNeverMoved() {
            const item = drawn(target);
            FileManager.drag(item, 300, 100, folders);
            compare(FileManager.drop(item, 310, 110), Qt.CopyAction);
            compare(item.got, [folders]);
            verify(!part(item, "frame").visible);
        }

        function test_aTextIsNotTaken() {
            const item = drawn(target);
            verify(!FileManager.dragText(item, 300, 100, "/srv/foto"));
            verify(!part(item, "frame").visible);
            compare(FileManager.drop(item, 300, 100), Qt.IgnoreAction);
            compare(item.got, []);
        }

        function test_nothingIsTakenWhileDisabled() {
            const item = drawn(target, {enabled: false});
            verify(!FileManager.drag(item, 300, 100, folders));
            compare(FileManager.drop(item, 300, 100), Qt.IgnoreAction);
            compare(item.got, []);
        }

        function test_theFrameIsAmber() {
            const item = drawn(target);
            FileManager.drag(item, 300, 100, folders);
            Eye.look(root);
            looks(item, 11, 200, Colours.amber, "rim");
            looks(item, 729, 200, Colours.amber, "rim");
            looks(item, 370, 11, Colours.amber, "rim");
            looks(item, 370, 369, Colours.amber, "rim");
            looks(item, 40, 200, Colours.over(0.2, Colours.amber, 0.08), "ground");
            looks(item, 5, 200, 0.2, "outside");
            const words = part(item, "words");
            compare(words.words, "Rilascia qui le cartelle da salvare");
            compare(String(words.color), String(Theme.ink));
            const found = Colours.contrast(words.color, Eye.at(words, -10, words.height / 2));
            verify(found >= 4.5, found);
            compare(ScreenReader.faults(root.Window.window), []);
            FileManager.leave(item);
        }

        function test_itsWordsFitWhereItIsNarrow() {
            const item = drawn(target, {width: 220});
            FileManager.drag(item, 100, 100, folders);
            Eye.look(root);
            const words = part(item, "words");
            verify(words.lineCount > 1);
            verify(words.mapToItem(item, 0, 0).x >= 20);
            verify(words.mapToItem(item, words.width, 0).x <= 200);
            FileManager.leave(item);
        }
    }
}
