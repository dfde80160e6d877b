#include "foundation/nstring.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(NStringNumbers, ToIntReadsDigitsUpToTheFirstOtherCharacter) {
    EXPECT_EQ(NString(L"12ab").ToInt(), 12);
    EXPECT_EQ(NString(L"-7 8").ToInt(), -7);
    EXPECT_EQ(NString(L"007").ToInt(), 7);
    EXPECT_EQ(NString(L" 5").ToInt(), 0);
    EXPECT_EQ(NString(L"+5").ToInt(), 0);
}

TEST(NStringNumbers, ToIntOfNoDigitsIsZero) {
    EXPECT_EQ(NString(L"-").ToInt(), 0);
    EXPECT_EQ(NString(L"").ToInt(), 0);
    EXPECT_EQ(NString(L"--5").ToInt(), 0);
}

TEST(NStringNumbers, ToIntWrapsAround) {
    EXPECT_EQ(NString(L"9223372036854775807").ToInt(), INT64_MAX);
    EXPECT_EQ(NString(L"9223372036854775808").ToInt(), INT64_MIN);
    EXPECT_EQ(NString(L"-9223372036854775808").ToInt(), INT64_MIN);
    EXPECT_EQ(NString(L"18446744073709551617").ToInt(), 1);
}

TEST(NStringNumbers, FromIntGivesDecimalText) {
    EXPECT_EQ(NString::FromInt(0), L"0");
    EXPECT_EQ(NString::FromInt(-1), L"-1");
    EXPECT_EQ(NString::FromInt(INT64_MAX), L"9223372036854775807");
    EXPECT_EQ(NString::FromInt(INT64_MIN), L"-9223372036854775808");
    EXPECT_EQ(NString::FromUInt(UINT64_MAX), L"18446744073709551615");
}

TEST(NStringNumbers, AStringIsMadeOfAnInteger) {
    EXPECT_EQ(NString(int32_t{-42}), L"-42");
    EXPECT_EQ(NString(int64_t{1} << 40), L"1099511627776");
}

TEST(NStringNumbers, FormatDoubleDropsTrailingZerosUnlessKept) {
    EXPECT_EQ(NString::FormatDouble(0.5, 1, false), L"0.5");
    EXPECT_EQ(NString::FormatDouble(2.0, 1, false), L"2");
    EXPECT_EQ(NString::FormatDouble(2.0, 2, true), L"2.00");
    EXPECT_EQ(NString::FormatDouble(2.5, 3, false), L"2.5");
    EXPECT_EQ(NString::FormatDouble(100.0, 0, false), L"100");
    EXPECT_EQ(NString::FormatDouble(100.0, 2, false), L"100");
}

TEST(NStringNumbers, FormatDoubleRoundsUpFrom51OfTheLastPlaceOnly) {
    EXPECT_EQ(NString::FormatDouble(1.25, 1, true), L"1.2");
    EXPECT_EQ(NString::FormatDouble(1.252, 1, true), L"1.3");
    EXPECT_EQ(NString::FormatDouble(1.5, 0, false), L"1");
    EXPECT_EQ(NString::FormatDouble(1.52, 0, false), L"2");
}

TEST(NStringNumbers, FormatDoubleKeepsTheZerosOfAFraction) {
    EXPECT_EQ(NString::FormatDouble(0.05, 2, false), L"0.05");
    EXPECT_EQ(NString::FormatDouble(0.0, 2, true), L"0.00");
    EXPECT_EQ(NString::FormatDouble(0.0, 2, false), L"0");
    EXPECT_EQ(NString::FormatDouble(0.999, 1, true), L"1.0");
}

TEST(NStringNumbers, FormatDoublePutsTheSignInFront) {
    EXPECT_EQ(NString::FormatDouble(-1.75, 1, false), L"-1.7");
    EXPECT_EQ(NString::FormatDouble(-0.25, 2, false), L"-0.25");
}

TEST(NStringNumbers, FormatDoubleKeepsTheSignOfWhatRoundsToZero) {
    EXPECT_EQ(NString::FormatDouble(-0.01, 1, false), L"-0");
    EXPECT_EQ(NString::FormatDouble(-0.01, 1, true), L"-0.0");
    EXPECT_EQ(NString::FormatDouble(-0.0, 1, false), L"0");
}

TEST(NStringNumbers, FormatDoubleWithoutDecimalsEndsInItsPointWhenZerosAreKept) {
    EXPECT_EQ(NString::FormatDouble(7.0, 0, true), L"7.");
}

TEST(NStringNumbers, FormatDoubleHoldsValuesAbove63Bits) {
    EXPECT_EQ(NString::FormatDouble(9223372036854775808.0, 0, false), L"9223372036854775808");
    EXPECT_EQ(NString::FormatDouble(18446744073709549568.0, 0, false), L"18446744073709549568");
}

TEST(NStringNumbers, FormatDoubleOfWhatNoNumberHoldsIsTheLargestMagnitude) {
    EXPECT_EQ(NString::FormatDouble(1e30, 0, false), L"18446744073709551615");
    EXPECT_EQ(NString::FormatDouble(-std::numeric_limits<double>::infinity(), 0, false),
              L"-18446744073709551615");
    EXPECT_EQ(NString::FormatDouble(std::nan(""), 0, false), L"18446744073709551615");
    EXPECT_EQ(NString::FormatDouble(1.5, -3, false), L"1");
    EXPECT_EQ(NString::FormatDouble(1.5, 1000, false), L"1.5");
}

TEST(NStringNumbers, ParseDoubleReadsWholeAndFraction) {
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"12.375"), 12.375);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"-0.5"), -0.5);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"42"), 42.0);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L".25"), 0.25);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"7."), 7.0);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L""), 0.0);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(nullptr), 0.0);
}

TEST(NStringNumbers, ParseDoubleSkipsLeadingBlanksAndEndsAtTheNextOne) {
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"   3.5 9"), 3.5);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"- 3"), 0.0);
}

TEST(NStringNumbers, ParseDoubleStopsAtTheFirstNonDigitBeforeThePoint) {
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"12x.5"), 12.0);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"1,5"), 1.0);
}

TEST(NStringNumbers, ParseDoubleCountsTheFractionFromTheBack) {
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"1.5x25"), 1.25);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"1.2.3"), 1.3);
    EXPECT_DOUBLE_EQ(NString::ParseDouble(L"1.25dB"), 1.0);
}
