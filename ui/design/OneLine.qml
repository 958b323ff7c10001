import QtQuick
import Vellomar.Design

// A text on one line, of the same height whether it shrinks or not. Line breaks, which file names
// and messages of tools may have, become spaces.
Label {
    id: root

    required property string line
    property real minimumScale: 1 // how far it shrinks before it is elided

    text: line.replace(/[\n\r\v\f\u0085\u2028\u2029]+/g, " ")
    height: Math.ceil(metrics.lineSpacing)
    verticalAlignment: Text.AlignVCenter
    maximumLineCount: 1
    elide: Text.ElideRight
    fontSizeMode: minimumScale < 1 ? Text.HorizontalFit : Text.FixedSize
    minimumPixelSize: Math.round(font.pixelSize * minimumScale)
    Accessible.ignored: true

    FontMetrics {
        id: metrics
        font: root.font
    }
}
