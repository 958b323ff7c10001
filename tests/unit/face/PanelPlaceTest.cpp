#include "ui/face/PanelPlace.h"

#include <gtest/gtest.h>

#include <ostream>

void PrintTo(const QPoint &point, std::ostream *stream)
{
    *stream << point.x() << ',' << point.y();
}

namespace {

constexpr QSize panel(330, 300);
constexpr QRect wholeScreen(0, 0, 1600, 1000);
constexpr QRect barAbove(0, 30, 1600, 970);
constexpr QRect barBelow(0, 0, 1600, 960);

TEST(PanelPlace, isBelowAnItemAtTheTop)
{
    EXPECT_EQ(PanelPlace::corner(panel, {1000, 2, 24, 24}, wholeScreen, barAbove), QPoint(846, 38));
    // Where the item is lower than the free area, below the item.
    EXPECT_EQ(PanelPlace::corner(panel, {1000, 20, 24, 24}, wholeScreen, barAbove),
              QPoint(846, 52));
}

TEST(PanelPlace, isAboveAnItemAtTheBottom)
{
    EXPECT_EQ(PanelPlace::corner(panel, {1000, 968, 24, 24}, wholeScreen, barBelow),
              QPoint(846, 652));
}

TEST(PanelPlace, staysWholeAtTheSides)
{
    EXPECT_EQ(PanelPlace::corner(panel, {1570, 2, 24, 24}, wholeScreen, barAbove),
              QPoint(1262, 38));
    EXPECT_EQ(PanelPlace::corner(panel, {0, 2, 24, 24}, wholeScreen, barAbove), QPoint(8, 38));
}

TEST(PanelPlace, isOnTheScreenOfItsItem)
{
    constexpr QRect second(1600, 200, 1280, 800);
    EXPECT_EQ(PanelPlace::corner(panel, {2850, 202, 24, 24}, second, second), QPoint(2542, 234));
}

TEST(PanelPlace, whenTheDesktopDoesNotTellItIsInTheCornerByTheBar)
{
    EXPECT_EQ(PanelPlace::corner(panel, {}, wholeScreen, barAbove), QPoint(1262, 38));
    EXPECT_EQ(PanelPlace::corner(panel, {}, wholeScreen, barBelow), QPoint(1262, 652));
    EXPECT_EQ(PanelPlace::corner(panel, {}, wholeScreen, wholeScreen), QPoint(1262, 8));
}

TEST(PanelPlace, onAScreenThatIsTooSmallItsBeginningIsSeen)
{
    constexpr QRect tiny(0, 0, 200, 150);
    EXPECT_EQ(PanelPlace::corner(panel, {}, tiny, tiny), QPoint(8, 8));
    EXPECT_EQ(PanelPlace::corner(panel, {180, 130, 16, 16}, tiny, tiny), QPoint(8, 8));
}

} // namespace
