import QtQuick

// A field of one line that shows dots instead of what is typed.
TextField {
    echoMode: TextInput.Password
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    passwordMaskDelay: 0
}
