import QtQml

// One page of the gallery. Its name is also that of its picture.
QtObject {
    required property string name
    required property url source
    property var given: ({}) // values of the source's properties
}
