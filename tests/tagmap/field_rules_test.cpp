#include "suite/tagmap/field_rules.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

TEST(FieldRules, NamesAreComparedWithoutAsciiCase) {
    EXPECT_TRUE(SameName(L"Album", L"ALBUM"));
    EXPECT_FALSE(SameName(L"Album", L"Albums"));
    EXPECT_FALSE(SameName(L"Albums", L"Album"));
    EXPECT_FALSE(SameName(TagLib::String(std::wstring(L"Album\0s", 7)), L"Album"));
    EXPECT_TRUE(SameName(std::wstring_view(L"Albums", 5), TagLib::String(L"ALBUM")));
    EXPECT_FALSE(SameName(L"\u00e4", L"\u00c4"));
    EXPECT_TRUE(BeginsWithName(L"wm/WMADRCPeak", L"WM/wmadrc"));
    EXPECT_FALSE(BeginsWithName(L"WM", L"WM/WMADRC"));
}

TEST(FieldRules, AnEmptyElementAsksForRemoval) {
    clTagRecord record;
    record.Add(L"a", L"");
    record.Add(L"a", L"x");
    record.AddData(L"a", "x", 1);
    EXPECT_TRUE(AsksRemoval(*record[0]));
    EXPECT_FALSE(AsksRemoval(*record[1]));
    EXPECT_FALSE(AsksRemoval(*record[2]));
}

TEST(FieldRules, BytesAloneRiffEntriesAndNamelessElementsAreNoTexts) {
    clTagRecord record;
    record.AddData(L"title", "x", 1);
    record.Add(L"_riff_INAM", L"x");
    record.Add(L"", L"x");
    record.Add(L"title", L"");
    record.Add(L"title", L"x");
    EXPECT_TRUE(IsNoText(*record[0]));
    EXPECT_TRUE(IsNoText(*record[1]));
    EXPECT_TRUE(IsNoText(*record[2]));
    EXPECT_FALSE(IsNoText(*record[3]));
    EXPECT_FALSE(IsNoText(*record[4]));
}

TEST(FieldRules, HalfASurrogatePairAndCarriageReturnsAloneAreNoTexts) {
    clTagRecord record;
    record.Add(L"title", L"a\xD83C");
    record.Add(L"title", L"\xDFB5\xD83C");
    record.Add(L"name \xDFB5", L"a");
    record.Add(L"title", L"\r\r");
    record.Add(L"title", L"\U0001F3B5");
    EXPECT_TRUE(IsNoText(*record[0]));
    EXPECT_TRUE(IsNoText(*record[1]));
    EXPECT_TRUE(IsNoText(*record[2]));
    EXPECT_TRUE(IsNoText(*record[3]));
    EXPECT_FALSE(IsNoText(*record[4]));
}

TEST(FieldRules, ValuesAreAddedWithACarriageReturnBetweenThem) {
    clTagRecord record;
    TagLib::StringList values(TagLib::String("a"));
    values.append("b");
    AddValues(record, L"genre", values);
    AddValues(record, L"mood", TagLib::StringList());
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Value, L"a\rb");
}

TEST(FieldRules, ANumberPairIsDigitsWithAnOptionalTotal) {
    clNumberPair pair;
    ASSERT_TRUE(ParseNumberPair(L"3/12", 65535, pair));
    EXPECT_EQ(pair.Number, 3);
    EXPECT_EQ(pair.Total, 12);
    ASSERT_TRUE(ParseNumberPair(L"03", 65535, pair));
    EXPECT_EQ(pair.Number, 3);
    EXPECT_EQ(pair.Total, 0);
    ASSERT_TRUE(ParseNumberPair(L"/7", 65535, pair));
    EXPECT_EQ(pair.Number, 0);
    EXPECT_EQ(pair.Total, 7);
    for (const wchar_t* text : {L"", L"/", L"A1", L"1/2/3", L"-1", L"65536", L"1/65536", L"3 /4"})
        EXPECT_FALSE(ParseNumberPair(text, 65535, pair)) << text;
}

TEST(FieldRules, ANumberPairIsShownWithoutItsZeros) {
    EXPECT_EQ(FormatNumberPair({3, 12}), L"3/12");
    EXPECT_EQ(FormatNumberPair({3, 0}), L"3");
    EXPECT_EQ(FormatNumberPair({0, 12}), L"/12");
    EXPECT_TRUE(FormatNumberPair({0, 0}).IsEmpty());
}

TEST(FieldRules, AWholeNumberIsRefusedWhenItIsAboveTheMost) {
    uint64_t number = 0;
    EXPECT_TRUE(ParseWholeNumber(L"18446744073709551615", UINT64_MAX, number));
    EXPECT_EQ(number, UINT64_MAX);
    EXPECT_FALSE(ParseWholeNumber(L"18446744073709551616", UINT64_MAX, number));
    EXPECT_TRUE(ParseWholeNumber(L"1", 1, number));
    EXPECT_FALSE(ParseWholeNumber(L"2", 1, number));
    EXPECT_FALSE(ParseWholeNumber(L"", 1, number));
}

} // namespace
} // namespace tagmap
