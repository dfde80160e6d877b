#include "foundation/nstring.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {
NString Repeated(wchar_t unit, int count) {
    NString text;
    text.SetLength(count, unit);
    return text;
}

NString After(NString text, void (*change)(NString&)) {
    change(text);
    return text;
}
} // namespace

TEST(NString, AnEmptyStringHasLengthOne) {
    NString text;
    EXPECT_EQ(text.Length, 1);
    EXPECT_EQ(text.Text, text.Inline);
    EXPECT_EQ(text.Text[0], 0);
    EXPECT_EQ(text.Capacity, 128);
    EXPECT_EQ(text.Value, 0);
    EXPECT_EQ(text.Narrow, nullptr);
}

TEST(NString, LiesInMemoryInItsOrderOfFields) {
    EXPECT_LT(offsetof(NString, Text), offsetof(NString, Length));
    EXPECT_LT(offsetof(NString, Length), offsetof(NString, Value));
    EXPECT_LT(offsetof(NString, Value), offsetof(NString, Inline));
    EXPECT_LT(offsetof(NString, Inline), offsetof(NString, Narrow));
    EXPECT_LT(offsetof(NString, Narrow), offsetof(NString, Capacity));
}

TEST(NString, TheLengthOfEveryResultCountsItsTerminator) {
    NString text(L"abcdef");
    EXPECT_EQ(text.Mid(2, 4).Length, 4);
    EXPECT_EQ(text.Mid(5, 100).Length, 3);
    EXPECT_EQ(text.Left(99).Length, 7);
    EXPECT_EQ(text.Right(2).Length, 3);
    EXPECT_EQ(text.From(4).Length, 4);
    EXPECT_EQ(text.ToUpper().Length, 7);
    EXPECT_EQ(text.ToLower().Length, 7);
    EXPECT_EQ(text.Concat(L"gh").Length, 9);
    text.Insert(L"xy", 3);
    EXPECT_EQ(text.Length, 11);
    text.Replace(L"xy", L"z");
    EXPECT_EQ(text.Length, 10);
    text.Delete(2, 4);
    EXPECT_EQ(text.Length, 7);
    text.RemoveRight(2);
    EXPECT_EQ(text.Length, 5);
    text.Delete(1, 9);
    EXPECT_EQ(text.Length, 1);
}

TEST(NString, AtGivesZeroOutOfRange) {
    NString text(L"abc");
    text.SetLength(1, 0);
    EXPECT_EQ(text.At(1), L'a');
    EXPECT_EQ(text.At(0), 0);
    EXPECT_EQ(text.At(2), 0);
    EXPECT_EQ(text.At(3), 0);
    EXPECT_EQ(text.RemoveAt(3), 0);
}

TEST(NString, ANullTextMakesAnEmptyString) {
    EXPECT_TRUE(NString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    EXPECT_TRUE(NString(static_cast<const char*>(nullptr)).IsEmpty());
    NString text(L"abc");
    text = static_cast<const wchar_t*>(nullptr);
    EXPECT_EQ(text.Length, 1);
}

TEST(NString, AStringOf127CharactersStaysInline) {
    NString text = Repeated(L'a', 127);
    EXPECT_EQ(text.Text, text.Inline);
    EXPECT_EQ(text.Capacity, 128);
    NString longer = Repeated(L'a', 128);
    EXPECT_NE(longer.Text, longer.Inline);
}

TEST(NString, CopyingTakesTheValueAndAssigningDoesNot) {
    NString source(L"abc", 77);
    NString copy(source);
    EXPECT_EQ(copy.Value, 77);
    NString assigned(L"x", 5);
    assigned = source;
    EXPECT_EQ(assigned, L"abc");
    EXPECT_EQ(assigned.Value, 5);
    assigned = L"def";
    EXPECT_EQ(assigned.Value, 5);
}

TEST(NString, ACopyKeepsZeroUnitsInside) {
    NString text(L"ab");
    text.SetLength(4, 0);
    NString copy(text);
    EXPECT_EQ(copy.Length, 5);
}

TEST(NString, AssigningTakesTheExactNeedAndTheCapacityNeverShrinks) {
    NString text;
    text = Repeated(L'a', 200);
    EXPECT_EQ(text.Capacity, 201);
    text = L"short";
    EXPECT_EQ(text.Capacity, 201);
    EXPECT_NE(text.Text, text.Inline);
}

TEST(NString, TextsMayLieInsideTheStringItself) {
    NString text(L"abcdef");
    text = text.Text + 2;
    EXPECT_EQ(text, L"cdef");
    text.Insert(text.Text, 3);
    EXPECT_EQ(text, L"cdcdefef");
    text.Append(text.Text + 6);
    EXPECT_EQ(text, L"cdcdefefef");
    text = Repeated(L'a', 120);
    text.Append(text.Text);
    EXPECT_EQ(text, Repeated(L'a', 240));
    text = Repeated(L'a', 500);
    ASSERT_EQ(text.Capacity, text.Length);
    text.Append(text.Text);
    EXPECT_EQ(text, Repeated(L'a', 1000));
    text = L"";
    text.Append(Repeated(L'a', 240));
    text.Replace(text.Text, text.Text);
    EXPECT_EQ(text, Repeated(L'a', 240));
}

TEST(NString, CompareGivesTheSign) {
    EXPECT_EQ(NString(L"abc").Compare(L"abd"), -1);
    EXPECT_EQ(NString(L"abd").Compare(L"abc"), 1);
    EXPECT_EQ(NString(L"abc").Compare(L"abc"), 0);
    EXPECT_EQ(NString(L"ab").Compare(L"abc"), -1);
    EXPECT_EQ(NString(L"abc").Compare(L"ab"), 1);
}

TEST(NString, CompareIsUnsigned) {
    EXPECT_EQ(NString(L"\xFFFD").Compare(L"a"), 1);
    EXPECT_EQ(NString(L"a").Compare(L"\x8000"), -1);
}

TEST(NString, CompareWithACountLooksAtSoManyCharacters) {
    EXPECT_EQ(NString(L"abc").Compare(L"abd", 2), 0);
    EXPECT_EQ(NString(L"abc").Compare(L"abd", 3), -1);
    EXPECT_EQ(NString(L"ab").Compare(L"ab", 10), 0);
    EXPECT_EQ(NString(L"abc").Compare(L"abd", -1), -1);
}

TEST(NString, CompareAgainstANullTextIsOne) {
    EXPECT_EQ(NString().Compare(static_cast<const wchar_t*>(nullptr)), 1);
}

TEST(NString, CompareIgnoresAsciiCaseOnly) {
    EXPECT_EQ(NString(L"ABCz").Compare(L"abcZ", 0, true), 0);
    EXPECT_EQ(NString(L"\u00C4").Compare(L"\u00E4", 0, true), -1);
    // "[" stands between the cases of letters.
    EXPECT_EQ(NString(L"[").Compare(L"{", 0, true), -1);
}

TEST(NString, FindGivesOneBasedPositions) {
    NString text(L"abcabc");
    EXPECT_EQ(text.Find(L"abc"), 1);
    EXPECT_EQ(text.Find(L"abc", 2), 4);
    EXPECT_EQ(text.Find(L"c", 6), 6);
    EXPECT_EQ(text.Find(L"x"), 0);
    EXPECT_EQ(text.Find(L"abcabcd"), 0);
    EXPECT_EQ(text.Find(L"cx", 6), 0);
}

TEST(NString, FindFromOutOfRangeFindsNothing) {
    NString text(L"abc");
    EXPECT_EQ(text.Find(L"a", 0), 0);
    EXPECT_EQ(text.Find(L"c", 4), 0);
    EXPECT_EQ(text.Find(L""), 0);
    EXPECT_EQ(text.Find(nullptr), 0);
    EXPECT_EQ(text.FindChar(L'a', 0), 0);
    EXPECT_EQ(text.FindChar(L'c', 4), 0);
    EXPECT_EQ(text.FindChar(0), 0);
}

TEST(NString, FindCharGoesForward) {
    NString text(L"abca");
    EXPECT_EQ(text.FindChar(L'a'), 1);
    EXPECT_EQ(text.FindChar(L'a', 2), 4);
    EXPECT_EQ(text.FindChar(L'x'), 0);
}

TEST(NString, FindLastCharGoesBackward) {
    NString text(L"abcab");
    EXPECT_EQ(text.FindLastChar(L'a'), 4);
    EXPECT_EQ(text.FindLastChar(L'a', 123456), 4);
    EXPECT_EQ(text.FindLastChar(L'a', 3), 1);
    EXPECT_EQ(text.FindLastChar(L'x'), 0);
    EXPECT_EQ(text.FindLastChar(L'a', 0), 0);
    EXPECT_EQ(text.FindLastChar(L'a', 6), 0);
    EXPECT_EQ(NString().FindLastChar(L'a'), 0);
}

TEST(NString, FindLastCharStopsAtAZeroUnit) {
    NString text(L"ab");
    text.SetLength(3, 0);
    text.Append(L"cd");
    EXPECT_EQ(text.FindLastChar(L'c'), 4);
    EXPECT_EQ(text.FindLastChar(L'a'), 0);
}

TEST(NString, RemoveAtReturnsTheCharacter) {
    NString text(L"abcd");
    EXPECT_EQ(text.RemoveAt(2), L'b');
    EXPECT_EQ(text, L"acd");
    EXPECT_EQ(text.RemoveAt(-12345), L'd');
    EXPECT_EQ(text, L"ac");
    EXPECT_EQ(text.RemoveAt(3), 0);
    EXPECT_EQ(text.RemoveAt(0), 0);
    EXPECT_EQ(text, L"ac");
    EXPECT_EQ(text.RemoveAt(1), L'a');
    EXPECT_EQ(text, L"c");
    EXPECT_EQ(NString().RemoveAt(NEnd), 0);
}

TEST(NString, DeleteRemovesAnInclusiveRange) {
    EXPECT_EQ(After(L"abcdef", [](NString& t) { t.Delete(2, 4); }), L"aef");
    EXPECT_EQ(After(L"abcdef", [](NString& t) { t.Delete(1, 6); }), L"");
    EXPECT_EQ(After(L"abcdef", [](NString& t) { t.Delete(6, 6); }), L"abcde");
}

TEST(NString, DeletePastTheEndEmptiesTheString) {
    EXPECT_EQ(After(L"abcdef", [](NString& t) { t.Delete(4, 100); }), L"");
    EXPECT_EQ(After(L"abcdef", [](NString& t) { t.Delete(4, 7); }), L"");
}

TEST(NString, DeleteWithABadRangeDoesNothing) {
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Delete(0, 2); }), L"abc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Delete(4, 9); }), L"abc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Delete(3, 2); }), L"abc");
}

TEST(NString, RemoveRightCutsTheEnd) {
    EXPECT_EQ(After(L"abcd", [](NString& t) { t.RemoveRight(3); }), L"a");
    EXPECT_EQ(After(L"abcd", [](NString& t) { t.RemoveRight(4); }), L"");
    EXPECT_EQ(After(L"abcd", [](NString& t) { t.RemoveRight(9); }), L"");
    EXPECT_EQ(After(L"abcd", [](NString& t) { t.RemoveRight(0); }), L"abcd");
    EXPECT_EQ(After(L"abcd", [](NString& t) { t.RemoveRight(-2); }), L"abcd");
}

TEST(NString, InsertPutsTextBeforeAPosition) {
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Insert(L"xy", 1); }), L"xyabc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Insert(L"xy", 4); }), L"abcxy");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Insert(L"xy", -12345); }), L"abcxy");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Insert(L"xy", 5); }), L"abc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Insert(L"xy", 0); }), L"abc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Insert(nullptr, 1); }), L"abc");
}

TEST(NString, InsertCharPutsOneCharacter) {
    EXPECT_EQ(After(L"abc", [](NString& t) { t.InsertChar(L'x', 2); }), L"axbc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.InsertChar(L'x'); }), L"abcx");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.InsertChar(L'x', 9); }), L"abc");
}

TEST(NString, InsertCharPutsAZeroUnitToo) {
    NString text(L"abc");
    text.InsertChar(0, 2);
    EXPECT_EQ(text.Length, 5);
    EXPECT_EQ(text.At(2), 0);
    EXPECT_EQ(text.At(3), L'b');
}

TEST(NString, AppendOfNothingDoesNothing) {
    NString text(L"abc");
    text.Append(static_cast<const wchar_t*>(nullptr));
    text.Append(L"");
    text.Append(L"xyz", 0);
    text.Append(L"xyz", -1);
    EXPECT_EQ(text, L"abc");
    text.Append(L"defgh", 2);
    EXPECT_EQ(text, L"abcde");
}

TEST(NString, GrowsByTheMarginOfEachOperation) {
    NString appended = Repeated(L'a', 127);
    appended.Append(L"bcd"); // 131 units
    EXPECT_EQ(appended.Capacity, 131 + 131 / 3);
    NString inserted = Repeated(L'a', 127);
    inserted.Insert(L"bcd", 1);
    EXPECT_EQ(inserted.Capacity, 131 + 32);
    NString oneMore = Repeated(L'a', 127);
    oneMore.InsertChar(L'b', 1);
    EXPECT_EQ(oneMore.Capacity, 129 + 32);
    NString joined = Repeated(L'a', 127);
    joined.Concat(L"bcd");
    EXPECT_EQ(joined.Capacity, 131 + 25);
}

TEST(NString, ConcatAppendsAndReturnsTheWhole) {
    NString text(L"ab");
    EXPECT_EQ(text.Concat(L"cd"), L"abcd");
    EXPECT_EQ(text, L"abcd");
    EXPECT_EQ(text.Concat(nullptr), L"abcd");
}

TEST(NString, MidIsInclusiveAndClampsItsEnd) {
    NString text(L"abcdef");
    EXPECT_EQ(text.Mid(2, 4), L"bcd");
    EXPECT_EQ(text.Mid(5, 100), L"ef");
    EXPECT_EQ(text.Mid(0, 3), L"");
    EXPECT_EQ(text.Mid(7, 9), L"");
    EXPECT_EQ(text.Mid(4, 3), L"");
}

TEST(NString, LeftRightAndFromCutOut) {
    NString text(L"abcdef");
    EXPECT_EQ(text.Left(0), L"");
    EXPECT_EQ(text.Left(2), L"ab");
    EXPECT_EQ(text.Left(99), L"abcdef");
    EXPECT_EQ(text.Right(2), L"ef");
    EXPECT_EQ(text.Right(0), L"");
    EXPECT_EQ(text.Right(99), L"abcdef");
    EXPECT_EQ(text.Right(6), L"abcdef");
    EXPECT_EQ(text.From(4), L"def");
    EXPECT_EQ(text.From(7), L"");
    EXPECT_EQ(NString().Left(0), L"");
}

TEST(NString, SetLengthCutsAndFills) {
    EXPECT_EQ(After(L"abc", [](NString& t) { t.SetLength(5, L'x'); }), L"abcxx");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.SetLength(1, L'x'); }), L"a");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.SetLength(-4, L'x'); }), L"");
}

TEST(NString, TrimLeftTakesBlanksAlone) {
    EXPECT_EQ(After(L"  a b ", [](NString& t) { t.TrimLeft(); }), L"a b ");
    EXPECT_EQ(After(L"   ", [](NString& t) { t.TrimLeft(); }), L"");
    EXPECT_EQ(After(L"\ta", [](NString& t) { t.TrimLeft(); }), L"\ta");
}

TEST(NString, CaseConversionIsAsciiOnly) {
    EXPECT_EQ(NString(L"aZ\u00E4[").ToUpper(), L"AZ\u00E4[");
    EXPECT_EQ(NString(L"aZ\u00C4[").ToLower(), L"az\u00C4[");
}

TEST(NString, ReplaceGoesOnBehindEachInsertion) {
    EXPECT_EQ(After(L"aXbX", [](NString& t) { t.Replace(L"X", L"XX"); }), L"aXXbXX");
    EXPECT_EQ(After(L"aaaa", [](NString& t) { t.Replace(L"aa", L"a"); }), L"aa");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Replace(L"b", L""); }), L"ac");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Replace(L"", L"x"); }), L"abc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Replace(nullptr, L"x"); }), L"abc");
    EXPECT_EQ(After(L"abc", [](NString& t) { t.Replace(L"b", nullptr); }), L"ac");
}

TEST(NString, ReplaceMayIgnoreAsciiCase) {
    EXPECT_EQ(After(L"aBcAb", [](NString& t) { t.Replace(L"AB", L"-", true); }), L"-c-");
    EXPECT_EQ(After(L"aBc", [](NString& t) { t.Replace(L"AB", L"-"); }), L"aBc");
}

TEST(NString, EightBitTextIsDecodedAsUtf8WithTheFlag) {
    EXPECT_EQ(NString("a\xC3\xA4", true), L"a\u00E4");
    NString withValue("abc", true, 9);
    EXPECT_EQ(withValue.Value, 9);
    EXPECT_EQ(NString("abc"), L"abc");
}

TEST(NString, ToNarrowGivesTheNarrowTextAnew) {
    NString text(L"abc");
    EXPECT_STREQ(text.ToNarrow(), "abc");
    text.Append(L"d");
    EXPECT_STREQ(text.ToNarrow(), "abcd");
}

TEST(NString, RawCopiesCarryTheirTerminator) {
    NString text(L"abc");
    char narrow[] = "xxxxxx";
    text.CopyToNarrow(narrow);
    EXPECT_STREQ(narrow, "abc");
    EXPECT_EQ(narrow[4], 'x');
    wchar_t wide[] = L"xxxxxx";
    text.CopyToWide(wide);
    EXPECT_EQ(NString(wide), L"abc");
    EXPECT_EQ(wide[4], L'x');
}
