#include "foundation/codepage.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

TEST(Codepage, Utf8IsDecodedByThePlatformWithSurrogates) {
    EXPECT_EQ(NString("\xF0\x9F\x8E\xB5", true), L"\xD83C\xDFB5");
    EXPECT_EQ(NString("a\xE4\xB8\xAD", true), L"a\x4E2D");
}

TEST(Codepage, NarrowTextGoesThroughTheSystemsCodePage) {
    const char text[] = "abc\xE4\xF6";
    wchar_t expected[16] = {};
    MultiByteToWideChar(CP_ACP, 0, text, -1, expected, 16);
    EXPECT_EQ(NString(text), static_cast<const wchar_t*>(expected));
}

TEST(Codepage, TheNarrowFormIsTheSystemsCodePage) {
    const wchar_t text[] = L"abc\u00E4\u4E2D";
    char expected[32] = {};
    WideCharToMultiByte(CP_ACP, 0, text, -1, expected, 32, nullptr, nullptr);
    NString string(text);
    EXPECT_STREQ(string.ToNarrow(), expected);
}

TEST(Codepage, AConversionWithoutRoomGivesNothing) {
    wchar_t one[1] = {L'x'};
    EXPECT_EQ(NWideFromUtf8("abc", one, 1), 0);
}
