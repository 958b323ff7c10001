import QtQuick
import Vellomar.Design

// A text on one line, as high whether it shrinks or not: names of files and words of tools may have
// breaks in them, which are blanks here.
Label {
    id: root

    required property string line
    property real minimumScale: 1 // how small it may get before it is cut

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
