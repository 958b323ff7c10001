#include "ui/design/FlowArrangement.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double unlimited = std::numeric_limits<double>::infinity();

TEST(FlowArrangement, boxesWrapLikeWords)
{
    const auto flow = flowArrangement({{40, 10}, {50, 20}, {30, 10}, {20, 15}}, 100, 8);
    const QList<QPointF> places{{0, 0}, {48, 0}, {0, 28}, {38, 28}};
    EXPECT_EQ(flow.places, places);
    EXPECT_EQ(flow.size, QSizeF(98, 43));
}

TEST(FlowArrangement, aBoxThatJustFitsStaysInItsLine)
{
    EXPECT_EQ(flowArrangement({{40, 10}, {52, 10}}, 100, 8).places[1], QPointF(48, 0));
    EXPECT_EQ(flowArrangement({{40, 10}, {52.5, 10}}, 100, 8).places[1], QPointF(0, 18));
}

TEST(FlowArrangement, aBoxWiderThanTheSpaceStandsAloneFromTheVeryBeginning)
{
    const auto flow = flowArrangement({{150, 10}, {20, 12}}, 100, 8);
    const QList<QPointF> places{{0, 0}, {0, 18}};
    EXPECT_EQ(flow.places, places);
    EXPECT_EQ(flow.size, QSizeF(150, 30));
}

TEST(FlowArrangement, withNoLimitThereIsOneLine)
{
    const auto flow = flowArrangement({{150, 10}, {2000, 12}, {30, 4}}, unlimited, 8);
    EXPECT_EQ(flow.places[2], QPointF(2166, 0));
    EXPECT_EQ(flow.size, QSizeF(2196, 12));
}

TEST(FlowArrangement, nothingTakesNoRoom)
{
    EXPECT_EQ(flowArrangement({}, 100, 8).size, QSizeF(0, 0));
}

} // namespace
