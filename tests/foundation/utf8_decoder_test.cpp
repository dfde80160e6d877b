#include "foundation/utf8_decoder.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

namespace {
NString Decode(const char* text) {
    wchar_t units[64];
    NDecodeUtf8(text, units, 64);
    return NString(units);
}
} // namespace

TEST(Utf8Decoder, TakesFormsOfOneToThreeBytes) {
    EXPECT_EQ(Decode("a\xC3\xA4\xE2\x82\xAC"), L"a\u00E4\u20AC");
}

TEST(Utf8Decoder, WritesAQuestionMarkForWhatOneUnitCantHold) {
    EXPECT_EQ(Decode("\xF0\x9F\x8E\xB5"
                     "a"),
              L"?a");
    EXPECT_EQ(Decode("\xF8\x88\x80\x80\x80|\xFC\x84\x80\x80\x80\x80"), L"?|?");
}

TEST(Utf8Decoder, TakesTheLargestValueBelow65536AsItIs) {
    EXPECT_EQ(Decode("\xEF\xBF\xBF"), L"\xFFFF");
    EXPECT_EQ(Decode("\xF0\x90\x80\x80"), L"?");
}

TEST(Utf8Decoder, PassesOverStrayContinuationBytes) {
    EXPECT_EQ(Decode("a\x80\xBF"
                     "b"),
              L"ab");
}

TEST(Utf8Decoder, PassesOverLeadBytesWithMoreThanSixOnes) {
    EXPECT_EQ(Decode("a\xFE\xFF"
                     "b"),
              L"ab");
}

TEST(Utf8Decoder, EndsAtABrokenContinuation) {
    EXPECT_EQ(Decode("ab\xC3zcd"), L"ab");
    EXPECT_EQ(Decode("ab\xE2\x82zcd"), L"ab");
}

TEST(Utf8Decoder, EndsAtTheEndOfTheInputInsideAForm) {
    EXPECT_EQ(Decode("ab\xE2\x82"), L"ab");
    EXPECT_EQ(Decode("ab\xC3"), L"ab");
}

TEST(Utf8Decoder, AValueOfZeroEndsTheText) {
    EXPECT_EQ(Decode("ab\xC0\x80zz"), L"ab");
}

TEST(Utf8Decoder, StopsAtTheRoomThereIsAndTerminates) {
    wchar_t units[4] = {L'x', L'x', L'x', L'x'};
    EXPECT_EQ(NDecodeUtf8("abcdef", units, 3), 2);
    EXPECT_EQ(units[1], L'b');
    EXPECT_EQ(units[2], 0);
    EXPECT_EQ(units[3], L'x');
    EXPECT_EQ(NDecodeUtf8("abc", units, 0), 0);
}
