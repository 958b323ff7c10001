import QtQuick
import Vellomar.Design
import Vellomar.Glance

// A state in a word, with a dot in the colour of what it means to the user.
StatusDot {
    id: root

    required property int tone // a value of Tone

    color: {
        switch (root.tone) {
        case Tone.Attention:
            return Theme.amber;
        case Tone.Wrong:
            return Theme.coral;
        case Tone.Well:
            return Theme.mint;
        default:
            return Theme.white(0.35);
        }
    }
}
