// A field for a password: it shows dots.
TextField {
    secure: true
}
