#include "ui/design/Motion.h"

#include <gtest/gtest.h>

#include <QEasingCurve>
#include <QPointF>

#include <algorithm>

namespace {

QEasingCurve curve(double response, double damping)
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    const QVariantList points = Motion::springCurve(response, damping);
    for (qsizetype i = 0; i + 5 < points.size(); i += 6) {
        const auto point = [&](qsizetype at) {
            return QPointF(points[i + at].toDouble(), points[i + at + 1].toDouble());
        };
        curve.addCubicBezierSegment(point(0), point(2), point(4));
    }
    return curve;
}

struct Spring
{
    double response;
    double damping;
};

void PrintTo(const Spring &spring, std::ostream *out)
{
    *out << spring.response << ' ' << spring.damping;
}

class SpringTest : public testing::TestWithParam<Spring>
{
};

TEST_P(SpringTest, theCurveFollowsTheSwing)
{
    const auto [response, damping] = GetParam();
    const QEasingCurve easing = curve(response, damping);
    const double length = Motion::springTime(response, damping) / 1000.0;
    for (double part = 0; part <= 1; part += 0.02) {
        EXPECT_NEAR(easing.valueForProgress(part),
                    Motion::springAt(response, damping, part * length), 0.01)
            << part;
    }
}

TEST_P(SpringTest, itOvershootsAndComesToRest)
{
    const auto [response, damping] = GetParam();
    const double length = Motion::springTime(response, damping) / 1000.0;
    EXPECT_DOUBLE_EQ(Motion::springAt(response, damping, 0), 0);
    EXPECT_NEAR(Motion::springAt(response, damping, length), 1, 0.002);
    double most = 0;
    for (double time = 0; time < length; time += length / 200) {
        most = std::max(most, Motion::springAt(response, damping, time));
    }
    EXPECT_GT(most, 1);
    EXPECT_LT(most, 1.05);
}

INSTANTIATE_TEST_SUITE_P(ofTheControls, SpringTest,
                         testing::Values(Spring{0.28, 0.78}, Spring{0.3, 0.8}, Spring{0.5, 0.88}));

TEST(Motion, stillnessTakesNoTime)
{
    Motion motion;
    EXPECT_EQ(motion.time(150), 150);
    motion.setStill(true);
    EXPECT_EQ(motion.time(150), 0);
}

} // namespace
