import QtQuick
import Vellomar.Design

// A text that wraps, without a single word on its last line. Where the width depends on the text,
// `room` is the largest width.
Label {
    required property string words
    property real room: width

    text: Typesetting.together(words, font, room)
    wrapMode: Text.Wrap
    Accessible.name: words
}
