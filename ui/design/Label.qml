import QtQuick
import Vellomar.Design

// A text of the window. Names of files and words of tools come in here, so nothing in it is ever
// taken for markup.
Text {
    color: Theme.text
    font.family: Theme.textFamily
    font.pixelSize: 13
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
