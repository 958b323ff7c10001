pragma Singleton
import QtQuick

// Colours to compare what is seen with. A colour is red, green and blue, each from 0 to 1, or one
// number for a gray.
QtObject {
    readonly property var amber: [0.98, 0.74, 0.26]
    readonly property var mint: [0.47, 0.88, 0.69]
    readonly property var coral: [0.98, 0.5, 0.42]
    readonly property var ink: [0.04, 0.13, 0.14]

    // What the gradients begin and end with, from top to bottom.
    readonly property var ground: [[0.09, 0.29, 0.315], [0.045, 0.175, 0.195]]
    readonly property var sidebar: [[0.055, 0.19, 0.21], [0.018, 0.085, 0.097]]
    readonly property var amberFade: [[1.0, 0.83, 0.44], [0.95, 0.66, 0.18]]

    function channels(colour) {
        return typeof colour === "number" ? [colour, colour, colour] : colour;
    }

    // Whether a pixel has a colour, but for what rounding may cost.
    function near(pixel, colour) {
        const most = 2 / 255 + 1e-6;
        const [red, green, blue] = channels(colour);
        return Math.abs(pixel.r - red) <= most && Math.abs(pixel.g - green) <= most
            && Math.abs(pixel.b - blue) <= most;
    }

    // The colour at a share, from 0 to 1, of the way from one to another.
    function between(from, to, share) {
        const end = channels(to);
        return channels(from).map((level, i) => level + (end[i] - level) * share);
    }

    // A colour of an opacity over a different colour.
    function over(below, above, opacity) {
        return between(below, above, opacity);
    }

    // A gradient at a share of its height.
    function part(gradient, share) {
        return between(gradient[0], gradient[1], share);
    }

    // How well a colour that may be translucent stands out from a ground, from 1 to 21.
    function contrast(colour, ground) {
        const mixed = between([ground.r, ground.g, ground.b], [colour.r, colour.g, colour.b],
                              colour.a);
        const [dark, bright] = [luminance(mixed), luminance([ground.r, ground.g, ground.b])].sort(
            (one, other) => one - other);
        return (bright + 0.05) / (dark + 0.05);
    }

    function luminance(colour) {
        const [red, green, blue] = colour.map(
            level => level <= 0.04045 ? level / 12.92 : Math.pow((level + 0.055) / 1.055, 2.4));
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
    }
}
