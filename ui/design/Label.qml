import QtQuick
import Vellomar.Design

// Any text of the window. Its format is plain text, since file names and messages of tools must not
// be read as markup.
Text {
    color: Theme.text
    font.family: Theme.textFamily
    font.pixelSize: 13
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
