#include "ui/shell/MenuBarIcon.h"

#include <QtMath>

#include <gtest/gtest.h>

namespace {

class MenuBarIconAtScale : public testing::TestWithParam<double>
{
protected:
    /// How opaque the pixel at a point is, counted from the centre, up being positive.
    [[nodiscard]] int opacityAt(double x, double y) const
    {
        const double scale = GetParam();
        return qAlpha(image.pixel(static_cast<int>(qFloor((9 + x) * scale)),
                                  static_cast<int>(qFloor((9 - y) * scale))));
    }
    /// The most opaque pixel within half a point of a point.
    [[nodiscard]] int strongestAround(double x, double y) const
    {
        int strongest = 0;
        for (const double dx : {-0.45, 0.0, 0.45}) {
            for (const double dy : {-0.45, 0.0, 0.45}) {
                strongest = qMax(strongest, opacityAt(x + dx, y + dy));
            }
        }
        return strongest;
    }
    [[nodiscard]] int strongestOfTick(int tick) const
    {
        const double angle = qDegreesToRadians(90.0 - 30.0 * tick);
        int strongest = 0;
        for (const double radius : {6.6, 7.0, 7.35, 7.7, 8.1}) {
            strongest =
                qMax(strongest, strongestAround(radius * qCos(angle), radius * qSin(angle)));
        }
        return strongest;
    }

    const QImage image = MenuBarIcon::image(GetParam(), Qt::black);
};

INSTANTIATE_TEST_SUITE_P(Screens, MenuBarIconAtScale, testing::Values(1.0, 1.5, 2.0, 8.0));

TEST_P(MenuBarIconAtScale, itIs18By18Points)
{
    const int side = qRound(18 * GetParam());
    EXPECT_EQ(image.size(), QSize(side, side));
    EXPECT_EQ(image.deviceIndependentSize(), QSizeF(18, 18));
}

TEST_P(MenuBarIconAtScale, nineTicksAreLitAndTheLastThreeAreDim)
{
    for (int tick = 0; tick < 12; ++tick) {
        const int opacity = strongestOfTick(tick);
        if (tick < 9) {
            EXPECT_GT(opacity, 150) << tick;
        } else {
            EXPECT_GT(opacity, 60) << tick;
            EXPECT_LE(opacity, 103) << tick; // 0.4 of 255, rounded up
        }
    }
}

TEST_P(MenuBarIconAtScale, theHandsGoUpAndToTheLowerRight)
{
    for (const double part : {0.0, 0.5, 0.9}) {
        EXPECT_GT(strongestAround(0, 4.2 * part), 150) << part;
        EXPECT_GT(strongestAround(2.648842778576781 * part, -1.4084146883576725 * part), 150)
            << part;
    }
    // And nowhere else.
    EXPECT_EQ(opacityAt(-3, -2), 0);
    EXPECT_EQ(opacityAt(-2.65, 1.41), 0);
    EXPECT_EQ(opacityAt(0, -4.2), 0);
    EXPECT_EQ(opacityAt(-2.65, -1.41), 0);
    EXPECT_EQ(opacityAt(3, 2.5), 0);
}

TEST_P(MenuBarIconAtScale, aPathOfTransparencySeparatesHandsTicksAndEdge)
{
    for (int tick = 0; tick < 12; ++tick) {
        const double between = qDegreesToRadians(75.0 - 30.0 * tick);
        EXPECT_LE(opacityAt(7.35 * qCos(between), 7.35 * qSin(between)), tick >= 8 ? 60 : 140)
            << tick;
    }
    for (const double corner : {-8.9, 8.9}) {
        EXPECT_EQ(opacityAt(corner, corner), 0);
        EXPECT_EQ(opacityAt(corner, -corner), 0);
    }
}

TEST_P(MenuBarIconAtScale, theBusyOneIsAnotherInTheSameSize)
{
    const QImage busy = MenuBarIcon::busyImage(GetParam(), Qt::black);
    EXPECT_EQ(busy.size(), image.size());
    EXPECT_NE(busy, image);
    int opaque = 0;
    for (int y = 0; y < busy.height(); ++y) {
        for (int x = 0; x < busy.width(); ++x) {
            opaque += qAlpha(busy.pixel(x, y)) > 100 ? 1 : 0;
        }
    }
    // Two thin arrows: neither nothing nor a block.
    const int all = busy.width() * busy.height();
    EXPECT_GT(opaque, all / 12);
    EXPECT_LT(opaque, all / 2);
}

TEST(MenuBarIcon, theStrokesHaveTheirWidths)
{
    // Large, so that a pixel is a twentieth of a point.
    constexpr int scale = 20;
    const QImage image = MenuBarIcon::image(scale, Qt::black);
    const auto opaqueInRow = [&image](double y) {
        int count = 0;
        for (int x = 7 * scale; x < 11 * scale; ++x) {
            count += qAlpha(image.pixel(x, qRound((9 - y) * scale))) > 127 ? 1 : 0;
        }
        return count;
    };
    EXPECT_NEAR(opaqueInRow(3), 1.7 * scale, 1);    // the long hand
    EXPECT_NEAR(opaqueInRow(7.35), 1.5 * scale, 1); // the first tick
    // Along the middle: the tick from 6.4 to 8.3 with its round caps, the hand with its own.
    const auto opaqueAt = [&image](double y) {
        return qAlpha(image.pixel(9 * scale, qRound((9 - y) * scale))) > 127;
    };
    EXPECT_TRUE(opaqueAt(8.3 + 0.65));
    EXPECT_TRUE(opaqueAt(6.4 - 0.65));
    EXPECT_FALSE(opaqueAt(6.4 - 0.9));
    EXPECT_TRUE(opaqueAt(4.2 + 0.75));
    EXPECT_FALSE(opaqueAt(4.2 + 1.0));
}

TEST(MenuBarIcon, bothFormsTakeTheColourThatIsAskedFor)
{
    const QColor color(200, 100, 50);
    for (const QImage &image : {MenuBarIcon::image(8, color), MenuBarIcon::busyImage(8, color)}) {
        int seen = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) == 255) {
                    ++seen;
                    EXPECT_EQ(image.pixelColor(x, y), color);
                }
            }
        }
        EXPECT_GT(seen, 100);
    }
}

TEST(MenuBarIcon, itIsWhiteWherePanelsAreAlwaysDark)
{
    const QColor text(1, 2, 3);
    EXPECT_EQ(MenuBarIcon::colorFor(QStringLiteral("GNOME"), text), QColor(Qt::white));
    EXPECT_EQ(MenuBarIcon::colorFor(QStringLiteral("ubuntu:GNOME"), text), QColor(Qt::white));
    EXPECT_EQ(MenuBarIcon::colorFor(QStringLiteral("gnome"), text), QColor(Qt::white));
    EXPECT_EQ(MenuBarIcon::colorFor(QStringLiteral("KDE"), text), text);
    EXPECT_EQ(MenuBarIcon::colorFor(QStringLiteral("GNOME-ish"), text), text);
    EXPECT_EQ(MenuBarIcon::colorFor(QString(), text), text);
}

} // namespace
