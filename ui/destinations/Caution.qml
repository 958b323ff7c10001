import QtQuick
import Vellomar.Design

// A word of caution about what the user has chosen.
InlineMessage {
    symbol: "exclamationmark.triangle"
    signColor: Theme.amber
    color: Theme.text
}
