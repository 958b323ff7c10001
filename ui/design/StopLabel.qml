import QtQuick
import Vellomar.Design

// The name of one stop of a StopSlider.
Label {
    required property bool current

    font.pixelSize: 11
    minimumPixelSize: 9
    fontSizeMode: Text.HorizontalFit
    font.weight: current ? Font.DemiBold : Font.Normal
    color: current ? Theme.text : Theme.white(0.55)
    horizontalAlignment: Text.AlignHCenter
    elide: Text.ElideRight
    Accessible.ignored: true
}
