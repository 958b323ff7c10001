.pragma library

// Whether a pixel is a colour given in parts of one, but for what rounding may cost.
function near(pixel, red, green, blue) {
    const most = 2 / 255 + 1e-6;
    return Math.abs(pixel.r - red) <= most && Math.abs(pixel.g - green) <= most
        && Math.abs(pixel.b - blue) <= most;
}

// A gray of an opacity over a ground of one level.
function over(ground, gray, opacity) {
    return ground * (1 - opacity) + gray * opacity;
}
