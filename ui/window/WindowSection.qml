import QtQml

// A section of the window: what leads to it, and its page.
QtObject {
    required property string symbol
    required property Component page
}
