#include "ui/design/TickRingGeometry.h"

#include <gtest/gtest.h>

namespace {

constexpr double near = 1e-9;

TEST(TickRingGeometry, ticksRunClockwiseFromTheTop)
{
    const QList<Tick> ticks = tickRing({200, 200}, 4, 0.2, 0.05, 0);
    ASSERT_EQ(ticks.size(), 4);
    const QPointF ends[] = {{100, 1.5}, {198.5, 100}, {100, 198.5}, {1.5, 100}};
    const QPointF begins[] = {{100, 20}, {180, 100}, {100, 180}, {20, 100}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(ticks[i].line.x2(), ends[i].x(), near) << i;
        EXPECT_NEAR(ticks[i].line.y2(), ends[i].y(), near) << i;
        EXPECT_NEAR(ticks[i].line.x1(), begins[i].x(), near) << i;
        EXPECT_NEAR(ticks[i].line.y1(), begins[i].y(), near) << i;
        EXPECT_NEAR(ticks[i].width, 5, near);
    }
}

TEST(TickRingGeometry, majorTicksAreLongerAndLessDim)
{
    const QList<Tick> ticks = tickRing({200, 200}, 48, 0.17, 0.028, 12);
    ASSERT_EQ(ticks.size(), 48);
    for (int i = 0; i < 48; ++i) {
        const bool major = i % 12 == 0;
        EXPECT_EQ(ticks[i].major, major) << i;
        EXPECT_DOUBLE_EQ(ticks[i].dim, major ? 0.34 : 0.17) << i;
        const double length = 98.5 - 100 * (1 - 0.17 * (major ? 1.35 : 1));
        EXPECT_NEAR(ticks[i].line.length(), length, 1e-6) << i;
    }
}

TEST(TickRingGeometry, majorEveryZeroMeansNoMajorTicks)
{
    for (const int every : {0, -3}) {
        for (const Tick &tick : tickRing({100, 100}, 12, 0.2, 0.1, every)) {
            EXPECT_FALSE(tick.major);
        }
    }
}

TEST(TickRingGeometry, noTicksNothingToDraw)
{
    EXPECT_TRUE(tickRing({100, 100}, 0, 0.2, 0.1, 3).isEmpty());
    EXPECT_TRUE(tickRing({100, 100}, -1, 0.2, 0.1, 3).isEmpty());
}

TEST(TickRingGeometry, theSmallerSideDecidesTheRadiusAndTheMiddleIsTheCentre)
{
    const QList<Tick> ticks = tickRing({300, 100}, 1, 0.2, 0.1, 0);
    EXPECT_NEAR(ticks[0].line.x2(), 150, near);
    EXPECT_NEAR(ticks[0].line.y2(), 50 - 0.985 * 50, near);
    EXPECT_NEAR(ticks[0].width, 5, near);
}

} // namespace
