import QtQuick

// What all pages have in common: a pane that scrolls and can have the focus itself.
Scroller {
    required property string title

    activeFocusOnTab: activeFocus // Tab goes on from here
    clip: true
    Accessible.role: Accessible.Pane
    Accessible.name: title
}
