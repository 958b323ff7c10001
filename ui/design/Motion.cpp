#include "ui/design/Motion.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

/// The distance from its end, as a part of the whole way, at which a spring counts as resting.
constexpr qreal rest = 0.001;

qreal clampedDamping(qreal damping)
{
    return std::clamp(damping, 0.05, 0.999);
}

} // namespace

void Motion::setStill(bool still)
{
    if (m_still != still) {
        m_still = still;
        Q_EMIT stillChanged();
    }
}

int Motion::time(int milliseconds) const
{
    return m_still ? 0 : milliseconds;
}

int Motion::springTime(qreal response, qreal damping)
{
    const qreal decay = clampedDamping(damping) * 2 * M_PI / response;
    return qCeil(-std::log(rest) / decay * 1000);
}

qreal Motion::springAt(qreal response, qreal damping, qreal seconds)
{
    const qreal fraction = clampedDamping(damping);
    const qreal free = 2 * M_PI / response;
    const qreal decay = fraction * free;
    const qreal swing = free * std::sqrt(1 - fraction * fraction);
    return 1 - std::exp(-decay * seconds) *
                   (std::cos(swing * seconds) + decay / swing * std::sin(swing * seconds));
}

QVariantList Motion::springCurve(qreal response, qreal damping)
{
    // A cubic segment with the same slopes at its ends is close to the curve. Qt's spline holds ten
    // segments and doesn't check for more.
    constexpr int pieces = 10;
    const qreal length = springTime(response, damping) / 1000.0;
    const qreal piece = length / pieces;
    const auto place = [&](qreal seconds) { return springAt(response, damping, seconds); };
    const auto slope = [&](qreal seconds) {
        constexpr qreal little = 1e-5;
        return (place(seconds + little) - place(std::max(0.0, seconds - little))) /
               (seconds < little ? little : 2 * little);
    };
    QVariantList points;
    for (int i = 0; i < pieces; ++i) {
        const qreal begin = i * piece;
        const qreal end = begin + piece;
        const bool last = i == pieces - 1;
        points << (begin + piece / 3) / length << place(begin) + slope(begin) * piece / 3
               << (end - piece / 3) / length << place(end) - slope(end) * piece / 3
               << (last ? 1 : end / length) << (last ? 1 : place(end));
    }
    return points;
}
