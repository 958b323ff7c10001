.pragma library
.import "../design/Colours.js" as Colours

// What the grounds of the window look like, in parts of one.
const ground = [[0.09, 0.29, 0.315], [0.045, 0.175, 0.195]];
const sidebar = [[0.055, 0.19, 0.21], [0.018, 0.085, 0.097]];
const amber = [0.98, 0.74, 0.26];
const mint = [0.47, 0.88, 0.69];
const coral = [0.98, 0.5, 0.42];

// A gradient at a fraction of its height.
function part(gradient, fraction) {
    return gradient[0].map((top, i) => top + (gradient[1][i] - top) * fraction);
}

// A gray of an opacity over a colour.
function under(colour, gray, opacity) {
    return colour.map(level => Colours.over(level, gray, opacity));
}

function isNear(pixel, colour) {
    return Colours.near(pixel, colour[0], colour[1], colour[2]);
}
