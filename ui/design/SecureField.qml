// A field for a password: it shows dots, and the password while its eye is held.
TextField {
    secure: true
}
