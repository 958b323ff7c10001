import QtQuick
import Vellomar.Design

// Words in as many lines as they take; the last one of them doesn't stand on a line alone. Where the
// width follows from the words, `room` says how wide they may get.
Label {
    required property string words
    property real room: width

    text: Typesetting.together(words, font, room)
    wrapMode: Text.Wrap
    Accessible.name: words
}
