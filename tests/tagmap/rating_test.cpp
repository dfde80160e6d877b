#include "suite/tagmap/rating.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

struct Pair {
    int From;
    int To;
};

int Parsed(const wchar_t* text) {
    int halfSteps = -1;
    return ParseRating(text, halfSteps) ? halfSteps : -1;
}

int Percent(const wchar_t* text) {
    int halfSteps = -1;
    return RatingFromPercent(text, halfSteps) ? halfSteps : -1;
}

int Fraction(const wchar_t* text) {
    int halfSteps = -1;
    return RatingFromFraction(text, halfSteps) ? halfSteps : -1;
}

TEST(Rating, APopularimeterGetsTheValuesThatWindowsWritesForWholeStars) {
    constexpr Pair Rows[] = {{0, 0},   {1, 13},  {2, 1},   {3, 54},  {4, 64},  {5, 118},
                             {6, 128}, {7, 186}, {8, 196}, {9, 242}, {10, 255}};
    for (const Pair& row : Rows)
        EXPECT_EQ(PopmFromRating(row.From), row.To) << row.From;
}

TEST(Rating, APopularimeterIsReadByRangesWithOneStandingApart) {
    constexpr Pair Rows[] = {{0, 0},   {1, 2},   {2, 1},   {22, 1},  {23, 2},  {31, 2},  {32, 3},
                             {63, 3},  {64, 4},  {95, 4},  {96, 5},  {127, 5}, {128, 6}, {159, 6},
                             {160, 7}, {195, 7}, {196, 8}, {223, 8}, {224, 9}, {254, 9}, {255, 10}};
    for (const Pair& row : Rows)
        EXPECT_EQ(RatingFromPopm(row.From), row.To) << row.From;
}

TEST(Rating, AsfStarsAreThoseOfWindowsAndHalfStepsStayBelowTheNextStar) {
    constexpr Pair Rows[] = {{0, 0},  {1, 10}, {2, 1},  {3, 24}, {4, 25}, {5, 49},
                             {6, 50}, {7, 70}, {8, 75}, {9, 90}, {10, 99}};
    for (const Pair& row : Rows)
        EXPECT_EQ(AsfFromRating(row.From), row.To) << row.From;
}

TEST(Rating, AsfIsReadAsTheNearestValue) {
    constexpr Pair Rows[] = {{0, 0},  {1, 2},  {5, 2},  {6, 1},  {17, 1}, {18, 3},  {24, 3},
                             {25, 4}, {37, 4}, {38, 5}, {49, 5}, {50, 6}, {60, 6},  {61, 7},
                             {72, 7}, {73, 8}, {82, 8}, {83, 9}, {94, 9}, {95, 10}, {99, 10}};
    for (const Pair& row : Rows)
        EXPECT_EQ(RatingFromAsf(row.From), row.To) << row.From;
}

TEST(Rating, EveryRatingComesBackFromEveryForm) {
    for (int halfSteps = 0; halfSteps <= RatingMost; ++halfSteps) {
        EXPECT_EQ(RatingFromPopm(PopmFromRating(halfSteps)), halfSteps);
        EXPECT_EQ(RatingFromAsf(AsfFromRating(halfSteps)), halfSteps);
        EXPECT_EQ(Percent(PercentFromRating(halfSteps).c_str()), halfSteps);
        EXPECT_EQ(Fraction(FractionFromRating(halfSteps).c_str()), halfSteps);
        EXPECT_EQ(Parsed(RatingText(halfSteps).c_str()), halfSteps);
    }
}

TEST(Rating, APercentageIsTenTimesTheHalfSteps) {
    EXPECT_EQ(PercentFromRating(0), L"0");
    EXPECT_EQ(PercentFromRating(7), L"70");
    EXPECT_EQ(PercentFromRating(10), L"100");
}

TEST(Rating, APercentageIsReadToTheNearestHalfStep) {
    EXPECT_EQ(Percent(L"0"), 0);
    EXPECT_EQ(Percent(L"4"), 0);
    EXPECT_EQ(Percent(L"5"), 1);
    EXPECT_EQ(Percent(L"74"), 7);
    EXPECT_EQ(Percent(L"75"), 8);
    EXPECT_EQ(Percent(L"100"), 10);
    EXPECT_EQ(Percent(L"70.0"), 7);
}

TEST(Rating, AFractionOfOneIsTenHalfSteps) {
    EXPECT_EQ(FractionFromRating(0), L"0");
    EXPECT_EQ(FractionFromRating(7), L"0.7");
    EXPECT_EQ(FractionFromRating(10), L"1");
    EXPECT_EQ(Fraction(L"0"), 0);
    EXPECT_EQ(Fraction(L"0.5"), 5);
    EXPECT_EQ(Fraction(L".8"), 8);
    EXPECT_EQ(Fraction(L"0.75"), 8);
    EXPECT_EQ(Fraction(L"1"), 10);
    EXPECT_EQ(Fraction(L"1.000"), 10);
}

TEST(Rating, NativeNumbersOutsideTheirRangeCountAsItsEnd) {
    EXPECT_EQ(RatingFromPopm(-1), 0);
    EXPECT_EQ(RatingFromPopm(999), 10);
    EXPECT_EQ(RatingFromAsf(-7), 0);
    EXPECT_EQ(RatingFromAsf(1000), 10);
    EXPECT_EQ(Percent(L"250"), 10);
    EXPECT_EQ(Percent(L"99999999999999999999999999"), 10);
    EXPECT_EQ(Fraction(L"3"), 10);
    EXPECT_EQ(PopmFromRating(11), 255);
    EXPECT_EQ(PopmFromRating(-1), 0);
    EXPECT_EQ(AsfFromRating(11), 99);
}

TEST(Rating, ATextThatIsNoNumberIsNoRating) {
    for (const wchar_t* text : {L"", L"abc", L"-1", L"1.2.3", L".", L"4 ", L" 4", L"1e1", L"0,5"}) {
        EXPECT_EQ(Percent(text), -1) << text;
        EXPECT_EQ(Fraction(text), -1) << text;
        EXPECT_EQ(Parsed(text), -1) << text;
    }
}

TEST(Rating, AnElementHoldsWholeHalfStepsUpToTen) {
    EXPECT_EQ(Parsed(L"0"), 0);
    EXPECT_EQ(Parsed(L"10"), 10);
    EXPECT_EQ(Parsed(L"11"), -1);
    EXPECT_EQ(Parsed(L"3.5"), -1);
    EXPECT_EQ(Parsed(L"07"), -1);
    EXPECT_EQ(Parsed(L"4294967296"), -1);
}

} // namespace
} // namespace tagmap
