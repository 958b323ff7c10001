#include "ui/shell/WindowPlace.h"

#include <gtest/gtest.h>

namespace {

constexpr QSize minimum(980, 660);
constexpr QRect screen(0, 0, 1920, 1080);
constexpr QRect right(1920, 100, 1600, 1000);

TEST(WindowFit, whatIsOnAScreenStaysWhereItIs)
{
    constexpr QRect place(100, 50, 1060, 720);
    EXPECT_EQ(WindowPlace::fitted(place, {screen}, minimum), place);
    constexpr QRect onTheRight(2000, 200, 1060, 720);
    EXPECT_EQ(WindowPlace::fitted(onTheRight, {screen, right}, minimum), onTheRight);
    EXPECT_EQ(WindowPlace::fitted(screen, {screen, right}, minimum), screen);
}

TEST(WindowFit, whatHangsOverAnEdgeIsPulledIn)
{
    constexpr QSize size(1060, 720);
    EXPECT_EQ(WindowPlace::fitted(QRect(QPoint(-300, -20), size), {screen}, minimum),
              QRect(QPoint(0, 0), size));
    EXPECT_EQ(WindowPlace::fitted(QRect(QPoint(1500, 900), size), {screen}, minimum),
              QRect(QPoint(1920 - 1060, 1080 - 720), size));
}

TEST(WindowFit, onTwoScreensItGoesToTheOneItCoversMost)
{
    constexpr QSize size(1060, 720);
    EXPECT_EQ(WindowPlace::fitted(QRect(QPoint(1000, 200), size), {screen, right}, minimum).left(),
              1920 - 1060);
    EXPECT_EQ(WindowPlace::fitted(QRect(QPoint(1700, 200), size), {screen, right}, minimum).left(),
              1920);
}

TEST(WindowFit, fromAScreenThatIsGoneItComesToTheFirst)
{
    constexpr QSize size(1060, 720);
    const QRect found =
        WindowPlace::fitted(QRect(QPoint(5000, 4000), size), {screen, right}, minimum);
    EXPECT_EQ(found.size(), size);
    EXPECT_TRUE(screen.contains(found));
    EXPECT_TRUE(screen.contains(
        WindowPlace::fitted(QRect(QPoint(-5000, -4000), size), {screen, right}, minimum)));
}

TEST(WindowFit, whatIsTooLargeOrTooSmallGetsARightSize)
{
    EXPECT_EQ(WindowPlace::fitted(QRect(-50, -50, 4000, 3000), {screen}, minimum), screen);
    EXPECT_EQ(WindowPlace::fitted(QRect(10, 10, 1, 1), {screen}, minimum),
              QRect(QPoint(10, 10), minimum));
}

TEST(WindowFit, aScreenThatIsTooSmallIsFilled)
{
    constexpr QRect small(0, 30, 800, 570);
    EXPECT_EQ(WindowPlace::fitted(QRect(300, 300, 1060, 720), {small}, minimum), small);
    constexpr QRect low(0, 0, 1600, 500);
    EXPECT_EQ(WindowPlace::fitted(QRect(300, 300, 1060, 720), {low}, minimum),
              QRect(300, 0, 1060, 500));
}

TEST(WindowFit, withoutAnyScreenItStays)
{
    constexpr QRect place(100, 50, 1060, 720);
    EXPECT_EQ(WindowPlace::fitted(place, {}, minimum), place);
}

} // namespace
