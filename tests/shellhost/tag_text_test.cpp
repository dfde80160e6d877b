#include "suite/shellhost/tag_text.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {
NString LineOf(const wchar_t* name, const wchar_t* value, std::string_view data = {}) {
    clTagElement element;
    element.Name = name;
    element.Value = value;
    if (!data.empty())
        element.Data.Set(data.data(), static_cast<uint32_t>(data.size()));
    return ElementLine(element);
}
} // namespace

TEST(TagText, ATextStandsBehindItsName) {
    EXPECT_EQ(LineOf(L"title", L"Klang 音色"), L"title: Klang 音色");
}

TEST(TagText, PartsStandWithASlashBetweenThem) {
    EXPECT_EQ(LineOf(L"artist", L"A\rB"), L"artist: A / B");
}

TEST(TagText, OtherControlCharactersAreShownAsBlanks) {
    EXPECT_EQ(LineOf(L"comment", L"a\nb\tc"), L"comment: a b c");
}

TEST(TagText, ThePicturesKindIsFoundFromItsBytes) {
    EXPECT_EQ(LineOf(L"_albumart_1", L"", "\x89PNG\r\n\x1A\n...."),
              L"_albumart_1: PNG picture, 12 bytes");
    EXPECT_EQ(LineOf(L"_albumart_1", L"", "\xFF\xD8\xFF\xE0"),
              L"_albumart_1: JPEG picture, 4 bytes");
    EXPECT_EQ(LineOf(L"_albumart_1", L"", "GIF89a"), L"_albumart_1: GIF picture, 6 bytes");
    EXPECT_EQ(LineOf(L"_albumart_1", L"", "BM12"), L"_albumart_1: BMP picture, 4 bytes");
    EXPECT_EQ(LineOf(L"_cdtoc", L"", "\x89PN"), L"_cdtoc: data, 3 bytes");
}

TEST(TagText, AnElementMayHoldBothTextAndData) {
    EXPECT_TRUE(LineOf(L"_riff_X", L"text", "d") == L"_riff_X: text; data, 1 bytes");
}
