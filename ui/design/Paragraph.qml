import QtQuick
import Vellomar.Design

// Words in as many lines as they take; the last one of them doesn't stand on a line alone. One that
// is as wide as its words tells apart what room there is for them.
Label {
    required property string words
    property real room: width

    text: Typesetting.together(words, font, room)
    wrapMode: Text.Wrap
    Accessible.name: words
}
