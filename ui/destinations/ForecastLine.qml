import QtQuick
import Vellomar.Design
import Vellomar.Glance

// Whether a destination will hold, and for how long. Nothing while nothing is known.
InlineMessage {
    required property notice forecast

    visible: text !== ""
    text: forecast.text
    symbol: forecast.warning ? "exclamationmark.triangle" : "checkmark.circle"
    signColor: forecast.warning ? Theme.coral : Theme.mint
    color: forecast.warning ? Theme.coral : Theme.secondary
    font.pixelSize: 12
}
