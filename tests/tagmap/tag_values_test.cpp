#include "suite/tagmap/tag_values.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

namespace {
using namespace tagmap;

std::wstring Listed(const TagLib::StringList& values) {
    return values.toString("|").toWString();
}

TagLib::StringList Values(std::initializer_list<const wchar_t*> texts) {
    TagLib::StringList values;
    for (const wchar_t* text : texts)
        values.append(text);
    return values;
}
} // namespace

TEST(TagValues, TextsKeepTheirSurrogatesBothWays) {
    const NString text(L"a\u00E4\u4E2D\xD83C\xDFB5");
    EXPECT_EQ(ToNString(ToTagLib(text)), text);
    EXPECT_EQ(ToTagLib(text).size(), 5u);
    EXPECT_EQ(ToNString(TagLib::String()), L"");
}

TEST(TagValues, AValueIsSplitAtCarriageReturns) {
    EXPECT_EQ(Listed(SplitValues(L"one\rtwo\rthree")), L"one|two|three");
    EXPECT_EQ(Listed(SplitValues(L"one")), L"one");
}

TEST(TagValues, EmptyPartsAreLeftOut) {
    EXPECT_EQ(Listed(SplitValues(L"\r\rone\r\rtwo\r")), L"one|two");
    EXPECT_TRUE(SplitValues(L"").isEmpty());
    EXPECT_TRUE(SplitValues(L"\r").isEmpty());
}

TEST(TagValues, ValuesAreJoinedByOneCarriageReturn) {
    EXPECT_EQ(JoinValues(Values({L"one", L"", L"two"})), L"one\rtwo");
    EXPECT_EQ(JoinValues(TagLib::StringList()), L"");
}

TEST(TagValues, ALineEndInsideAValueIsNoSeparator) {
    EXPECT_EQ(JoinValues(Values({L"first\r\nsecond", L"a\rb"})), L"first\nsecond\ra\nb");
}

TEST(TagValues, ASingleFieldGetsSemicolonsBetweenTheValues) {
    EXPECT_EQ(JoinForSingleField(Values({L"one", L"two"})), TagLib::String("one; two"));
}

TEST(Refusals, HoldEachNameOnceWhateverItsCase) {
    Refusals refused;
    refused.Add(L"Tempo");
    refused.Add(L"tempo");
    refused.Add(L"track");
    EXPECT_EQ(refused.Names().Join(L"|"), L"Tempo|track");
    EXPECT_TRUE(refused.Contains(L"TRACK"));
    EXPECT_FALSE(refused.Contains(L"disc"));
}
