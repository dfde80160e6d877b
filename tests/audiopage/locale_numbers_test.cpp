#include "audiopage/locale_numbers.h"
#include "tests/audiopage/page_settings.h"
#include "tests/support/nstring_printer.h"

#include <cwchar>
#include <string>

namespace {
class LocaleFormat : public PageSettings {
protected:
    static NString Applied(const wchar_t* text) {
        NString rewritten(text);
        ApplyLocaleNumber(rewritten);
        return rewritten;
    }
};
} // namespace

TEST_F(LocaleFormat, MissingValuesHaveTheirDefaults) {
    NRegDeleteValue(L"sThousand", HKEY_CURRENT_USER, L"Control Panel\\International");
    const LocaleNumbers& numbers = LocaleNumbers::Get();
    EXPECT_TRUE(numbers.Loaded);
    EXPECT_TRUE(numbers.LeadingZero);
    EXPECT_EQ(numbers.NegativeStyle, 1);
    EXPECT_FALSE(numbers.IndianGrouping);
    EXPECT_STREQ(numbers.NegativeSign, L"-");
    EXPECT_STREQ(numbers.PositiveSign, L"");
    EXPECT_STREQ(numbers.ThousandSep, L"");
    EXPECT_STREQ(numbers.DecimalSep, L".");
    EXPECT_STREQ(numbers.TimeSep, L":");
}

TEST_F(LocaleFormat, EmptyTextsHaveTheDefaultsToo) {
    for (const wchar_t* name : {L"iLZero", L"iNegNumber", L"sGrouping", L"sNegativeSign",
                                L"sPositiveSign", L"sThousand", L"sDecimal", L"sTime"})
        SetLocale(name, L"");
    const LocaleNumbers& numbers = LocaleNumbers::Get();
    EXPECT_TRUE(numbers.LeadingZero);
    EXPECT_EQ(numbers.NegativeStyle, 1);
    EXPECT_FALSE(numbers.IndianGrouping);
    EXPECT_STREQ(numbers.NegativeSign, L"-");
    EXPECT_STREQ(numbers.PositiveSign, L"");
    EXPECT_STREQ(numbers.ThousandSep, L"");
    EXPECT_STREQ(numbers.DecimalSep, L".");
    EXPECT_STREQ(numbers.TimeSep, L":");
}

TEST_F(LocaleFormat, EachValueIsRead) {
    SetLocale(L"iLZero", L"0");
    SetLocale(L"iNegNumber", L"4");
    SetLocale(L"sGrouping", L"3;2;0");
    SetLocale(L"sNegativeSign", L"~");
    SetLocale(L"sPositiveSign", L"+");
    SetLocale(L"sThousand", L"'");
    SetLocale(L"sDecimal", L"*");
    SetLocale(L"sTime", L"h");
    const LocaleNumbers& numbers = LocaleNumbers::Get();
    EXPECT_FALSE(numbers.LeadingZero);
    EXPECT_EQ(numbers.NegativeStyle, 4);
    EXPECT_TRUE(numbers.IndianGrouping);
    EXPECT_STREQ(numbers.NegativeSign, L"~");
    EXPECT_STREQ(numbers.PositiveSign, L"+");
    EXPECT_STREQ(numbers.ThousandSep, L"'");
    EXPECT_STREQ(numbers.DecimalSep, L"*");
    EXPECT_STREQ(numbers.TimeSep, L"h");
}

TEST_F(LocaleFormat, OnlyALeadingZeroDigitOfTheSettingTurnsLeadingZerosOff) {
    SetLocale(L"iLZero", L"10");
    EXPECT_TRUE(LocaleNumbers::Get().LeadingZero);
    ChangeLocale(L"iLZero", L"01");
    EXPECT_FALSE(LocaleNumbers::Get().LeadingZero);
}

TEST_F(LocaleFormat, OnlyTheExactGroupingIsIndian) {
    SetLocale(L"sGrouping", L"3;2");
    EXPECT_FALSE(LocaleNumbers::Get().IndianGrouping);
    ChangeLocale(L"sGrouping", L"3;2;0 ");
    EXPECT_FALSE(LocaleNumbers::Get().IndianGrouping);
    ChangeLocale(L"sGrouping", L"3;0");
    EXPECT_FALSE(LocaleNumbers::Get().IndianGrouping);
}

TEST_F(LocaleFormat, TextsAreCutAtFiveCharacters) {
    for (const wchar_t* name :
         {L"sNegativeSign", L"sPositiveSign", L"sThousand", L"sDecimal", L"sTime"})
        SetLocale(name, L"abcdefg");
    const LocaleNumbers& numbers = LocaleNumbers::Get();
    EXPECT_STREQ(numbers.NegativeSign, L"abcde");
    EXPECT_STREQ(numbers.PositiveSign, L"abcde");
    EXPECT_STREQ(numbers.ThousandSep, L"abcde");
    EXPECT_STREQ(numbers.DecimalSep, L"abcde");
    EXPECT_STREQ(numbers.TimeSep, L"abcde");
}

TEST_F(LocaleFormat, AChangeShowsInTheNextProcessOnly) {
    EXPECT_EQ(FormatGroupedInt(1234), L"1,234");
    SetLocale(L"sThousand", L"'");
    EXPECT_EQ(FormatGroupedInt(1234), L"1,234");
    LocaleNumbers::Forget();
    EXPECT_EQ(FormatGroupedInt(1234), L"1'234");
}

TEST_F(LocaleFormat, DigitsAreGroupedByThree) {
    EXPECT_EQ(FormatGroupedInt(0), L"0");
    EXPECT_EQ(FormatGroupedInt(999), L"999");
    EXPECT_EQ(FormatGroupedInt(1000), L"1,000");
    EXPECT_EQ(FormatGroupedInt(123456), L"123,456");
    EXPECT_EQ(FormatGroupedInt(1234567), L"1,234,567");
    EXPECT_EQ(FormatGroupedInt(INT64_MAX), L"9,223,372,036,854,775,807");
    EXPECT_EQ(FormatGroupedInt(INT64_MIN), L"-9,223,372,036,854,775,808");
}

TEST_F(LocaleFormat, NoSeparatorStandsBehindASign) {
    EXPECT_EQ(FormatGroupedInt(-123), L"-123");
    EXPECT_EQ(FormatGroupedInt(-123456), L"-123,456");
    EXPECT_EQ(FormatGroupedInt(-1234), L"-1,234");
}

TEST_F(LocaleFormat, IndianGroupsBeyondTheFirstAreOfTwo) {
    SetLocale(L"sGrouping", L"3;2;0");
    EXPECT_EQ(FormatGroupedInt(1234567), L"12,34,567");
    EXPECT_EQ(FormatGroupedInt(123456789), L"12,34,56,789");
    EXPECT_EQ(FormatGroupedInt(-12345), L"-12,345");
    EXPECT_EQ(FormatGroupedInt(-1234567), L"-12,34,567");
}

TEST_F(LocaleFormat, OnlyTheWholePartIsGrouped) {
    EXPECT_EQ(Applied(L"1234567.891234"), L"1,234,567.891234");
    EXPECT_EQ(Applied(L".5"), L".5");
}

TEST_F(LocaleFormat, WithoutAThousandSeparatorNoGroupingShows) {
    SetLocale(L"sThousand", L"");
    EXPECT_EQ(FormatGroupedInt(1234567), L"1234567");
}

TEST_F(LocaleFormat, WithoutADecimalSeparatorAPointIsShown) {
    SetLocale(L"sDecimal", L"");
    EXPECT_EQ(FormatGroupedDecimal(1.5, 1), L"1.5");
}

TEST_F(LocaleFormat, SeparatorsMayBeLong) {
    SetLocale(L"sThousand", L"[t]");
    SetLocale(L"sDecimal", L"<d>");
    EXPECT_EQ(Applied(L"1234567.5"), L"1[t]234[t]567<d>5");
}

// The search for the decimal point meets the separators first: wanted.
TEST_F(LocaleFormat, AThousandSeparatorThatIsAPointIsTakenForTheDecimalPoint) {
    SetLocale(L"sThousand", L".");
    SetLocale(L"sDecimal", L",");
    EXPECT_EQ(FormatGroupedInt(1234567), L"1,234.567");
    EXPECT_EQ(FormatGroupedInt(1234), L"1,234");
    EXPECT_EQ(Applied(L"1234.5"), L"1,234.5");
    EXPECT_EQ(Applied(L"234.5"), L"234,5");
}

TEST_F(LocaleFormat, NegativeNumbersHaveTheStyleOfTheLocale) {
    const struct {
        const wchar_t* style;
        const wchar_t* text;
    } cases[] = {
        {L"0", L"(1,234.5)"}, {L"1", L"~1,234.5"},   {L"2", L"~ 1,234.5"}, {L"3", L"1,234.5~"},
        {L"4", L"1,234.5 ~"}, {L"5", L"~1,234.5"},   {L"-1", L"~1,234.5"}, {L"", L"~1,234.5"},
        {L"x", L"(1,234.5)"}, {L"04", L"1,234.5 ~"},
    };
    SetLocale(L"sNegativeSign", L"~");
    for (const auto& expected : cases) {
        ChangeLocale(L"iNegNumber", expected.style);
        EXPECT_EQ(Applied(L"-1234.5"), expected.text) << NString(expected.style).ToNarrow();
    }
}

TEST_F(LocaleFormat, PositiveNumbersGetTheirSign) {
    SetLocale(L"sPositiveSign", L"+");
    EXPECT_EQ(FormatGroupedInt(1234), L"+1,234");
    EXPECT_EQ(FormatGroupedInt(0), L"+0");
    EXPECT_EQ(FormatGroupedInt(-5), L"-5");
}

TEST_F(LocaleFormat, AnEmptyTextGetsNoSign) {
    SetLocale(L"sPositiveSign", L"+");
    EXPECT_EQ(Applied(L""), L"");
}

TEST_F(LocaleFormat, DecimalsLoseTheirZerosAndRoundUpFrom51) {
    SetLocale(L"sDecimal", L",");
    EXPECT_EQ(FormatGroupedDecimal(44.1, 1), L"44,1");
    EXPECT_EQ(FormatGroupedDecimal(48.0, 1), L"48");
    EXPECT_EQ(FormatGroupedDecimal(1.25, 1), L"1,2");
    EXPECT_EQ(FormatGroupedDecimal(1.252, 1), L"1,3");
    EXPECT_EQ(FormatGroupedDecimal(-1.5, 1), L"-1,5");
}
