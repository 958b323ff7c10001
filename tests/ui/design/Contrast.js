.pragma library

function light(level) {
    return level <= 0.04045 ? level / 12.92 : Math.pow((level + 0.055) / 1.055, 2.4);
}

function luminance(colour) {
    return 0.2126 * light(colour.r) + 0.7152 * light(colour.g) + 0.0722 * light(colour.b);
}

// How well a colour that may be translucent stands out from a ground, from 1 to 21.
function ratio(colour, ground) {
    const mixed = {};
    for (const channel of ["r", "g", "b"]) {
        mixed[channel] = ground[channel] * (1 - colour.a) + colour[channel] * colour.a;
    }
    const [dark, bright] = [luminance(mixed), luminance(ground)].sort((a, b) => a - b);
    return (bright + 0.05) / (dark + 0.05);
}
