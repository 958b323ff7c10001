import QtQuick
import Vellomar.Design
import Vellomar.Glance

// A dial of 24 hours: each half-hour in which a version was made is lit. While a backup runs, the
// ring fills. All measures are fractions of the diameter.
//
// Bezel and well are painted once, the ring only when the lit ticks change, so that during a run
// only the text is painted each second.
Item {
    id: root

    required property Summary summary
    property real diameter: 236
    readonly property bool captioned: diameter > 150

    // A length in whole pixels, so that edges are sharp.
    function snapped(length: real): real {
        const scale = Screen.devicePixelRatio;
        return Math.round(length * scale) / scale;
    }

    implicitWidth: diameter
    implicitHeight: diameter
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTranslate("Texts", "%1 %2").arg(summary.dialValue).arg(summary.dialCaption)

    Surface {
        objectName: "bezel"
        width: root.diameter
        height: root.diameter
        radius: root.diameter / 2
        fill: Theme.bezelGradient
        rim: Theme.rim
        rimWidth: Math.max(1, 0.006 * root.diameter)
        shadowColor: Theme.black(0.42)
        shadowRadius: 0.09 * root.diameter
        shadowOffset: Qt.point(0, 0.055 * root.diameter)
    }

    TickRing {
        id: ring

        // Still the former value while ticksChanged is emitted.
        readonly property real percent: root.summary.percent

        // The progress of a run fades in; a new version is lit at once.
        function follow() {
            transition = root.summary.percent === percent ? 0 : Motion.time(400);
            lit = root.summary.litTicks;
        }

        objectName: "ring"
        x: root.snapped(0.05 * root.diameter)
        y: x
        width: root.diameter - 2 * x
        height: width
        count: 48
        length: 0.17
        thickness: 0.028
        majorEvery: 12
        lit: root.summary.litTicks
    }

    Connections {
        target: root.summary
        function onTicksChanged() {
            ring.follow();
        }
    }

    Surface {
        readonly property real angle: 2 * Math.PI * root.summary.nowFraction
        readonly property real reach: (0.5 - 0.024) * root.diameter

        objectName: "marker"
        x: (root.diameter - width) / 2 + reach * Math.sin(angle)
        y: (root.diameter - height) / 2 - reach * Math.cos(angle)
        width: 0.026 * root.diameter
        height: width
        radius: width / 2
        fill: Theme.flat(Theme.white(1))
        shadowColor: Theme.white(0.8)
        shadowRadius: 3
    }

    Surface {
        objectName: "well"
        x: root.snapped(0.17 * root.diameter)
        y: x
        width: root.diameter - 2 * x
        height: width
        radius: width / 2
        fill: Theme.wellGradient
        rim: Theme.vertical(Theme.black(0.5), Theme.white(0.16))
        rimWidth: Math.max(1, 0.008 * root.diameter)
    }

    Column {
        objectName: "text"
        x: (root.diameter - width) / 2
        // The visible part is centred: from the tops of the digits to the descenders of the last
        // line.
        y: root.snapped((root.diameter - height - value.above
                         + (root.captioned ? captionMetrics.hanging : value.below)) / 2)
        width: 0.54 * root.diameter
        spacing: 0.012 * root.diameter

        Digits {
            id: value

            objectName: "value"
            width: parent.width
            text: root.summary.dialValue
            minimumScale: 0.5
            steady: root.summary.running
            font: Qt.font({
                family: Theme.roundedFamily,
                pixelSize: Math.round(0.165 * root.diameter),
                weight: Font.DemiBold
            })
            Accessible.ignored: true
        }

        FontMetrics {
            id: captionMetrics

            readonly property rect tail: tightBoundingRect("p")
            readonly property real hanging: descent - tail.y - tail.height

            font: caption.font
        }

        Paragraph {
            id: caption

            objectName: "caption"
            width: parent.width
            visible: root.captioned
            words: root.summary.dialCaption
            font.pixelSize: 12
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 2
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
