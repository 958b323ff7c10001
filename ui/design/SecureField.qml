import QtQuick

// A field for a password: it shows dots.
TextField {
    echoMode: TextInput.Password
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    passwordMaskDelay: 0
}
