import QtQml

// A page of the gallery. Its picture has the same name.
QtObject {
    required property string name
    required property url source
    property var given: ({}) // values of the source's properties
}
