#include "toolkit/tip_placement.h"

#include <gtest/gtest.h>

#include <string>

namespace {
constexpr int32_t ScreenRight = 1280;

struct Placed {
    const char* name;
    SIZE tip;
    TipAnchor anchor;
    POINT cursor;
    POINT place;
};

class Placement : public testing::TestWithParam<Placed> {};

std::string NameOf(const testing::TestParamInfo<Placed>& row) {
    return row.param.name;
}

constexpr SIZE Tip = {100, 20};

TipAnchor Anchor(int32_t top, int32_t bottom, int32_t x = 300) {
    return {top, bottom, x};
}
} // namespace

TEST_P(Placement, IsAsTheTableSays) {
    const Placed& row = GetParam();
    const POINT place = PlaceTip(row.tip, row.anchor, row.cursor, ScreenRight);
    EXPECT_EQ(row.place.x, place.x);
    EXPECT_EQ(row.place.y, place.y);
}

INSTANTIATE_TEST_SUITE_P(
    Tip, Placement,
    testing::Values(
        Placed{"AboveItsAnchor", Tip, Anchor(200, 220), {300, 210}, {300, 178}},
        Placed{"FiftyAboveTheCursorStays", Tip, Anchor(200, 220), {300, 248}, {300, 178}},
        Placed{
            "MoreThanFiftyAboveTheCursorComesDown", Tip, Anchor(200, 220), {300, 249}, {300, 179}},
        Placed{"NextToTheCursorOnAHighAnchor", Tip, Anchor(10, 500), {300, 300}, {300, 230}},
        Placed{"AtTheTopOfTheScreen", Tip, Anchor(22, 40), {300, 30}, {300, 0}},
        Placed{"UnderItsAnchorWithoutRoomAbove", Tip, Anchor(21, 40), {300, 30}, {300, 41}},
        Placed{"UnderItsAnchorFiftyBelowTheCursor", Tip, Anchor(21, 79), {300, 30}, {300, 80}},
        Placed{"UnderItsAnchorNotMoreThanFiftyBelowTheCursor",
               Tip,
               Anchor(21, 80),
               {300, 30},
               {300, 80}},
        Placed{"FixedFarFromTheCursor", Tip, FixedTipAnchor(300, 200), {900, 900}, {300, 178}},
        Placed{
            "FixedAtTheTopGoesUnderItsPoint", Tip, FixedTipAnchor(300, 10), {900, 900}, {300, 12}},
        // Wanted.
        Placed{"FixedAtTheTopFollowsACursorAboveTheScreen",
               Tip,
               FixedTipAnchor(300, 10),
               {900, -45},
               {300, 5}},
        Placed{"UpToTheRightEdge", Tip, Anchor(200, 220, 1180), {1180, 210}, {1180, 178}},
        Placed{"MovedLeftFromTheRightEdge", Tip, Anchor(200, 220, 1181), {1181, 210}, {1180, 178}},
        Placed{
            "FixedMovedLeftFromTheRightEdge", Tip, FixedTipAnchor(1279, 200), {0, 0}, {1180, 178}},
        Placed{"PartlyOffTheLeftEdge", Tip, Anchor(200, 220, -30), {-30, 210}, {-30, 178}},
        Placed{"WiderThanTheScreenStartsLeftOfIt",
               {1300, 20},
               Anchor(200, 220, 5),
               {5, 210},
               {-20, 178}}),
    NameOf);

TEST(TipState, IsShadedUpTo130PixelsAndFlatAbove) {
    EXPECT_EQ(256u, TipStateOfWidth(0));
    EXPECT_EQ(256u, TipStateOfWidth(130));
    EXPECT_EQ(512u, TipStateOfWidth(131));
}

TEST(TipMargins, AreWiderInAFrame) {
    EXPECT_EQ(2, MarginsOfTip(0).across);
    EXPECT_EQ(4, MarginsOfTip(0).down);
    EXPECT_EQ(8, MarginsOfTip(1).across);
    EXPECT_EQ(10, MarginsOfTip(1).down);
    EXPECT_EQ(2, MarginsOfTip(2).across); // 1 alone means a frame
}

TEST(TipAnchor, OfAFixedPlaceIsOnePixelHigh) {
    const TipAnchor anchor = FixedTipAnchor(7, 9);
    EXPECT_EQ(7, anchor.x);
    EXPECT_EQ(9, anchor.top);
    EXPECT_EQ(10, anchor.bottom);
    EXPECT_TRUE(anchor.fixed);
}
