#include "suite/shellhost/tag_check.h"

#include <gtest/gtest.h>

namespace {
bool Holds(const wchar_t* found, const wchar_t* wanted) {
    clTagRecord tag;
    tag.Add(L"artist", found);
    clTagElement element;
    element.Name = L"Artist";
    element.Value = wanted;
    return HoldsElement(tag, element);
}

void AddPictures(clTagRecord& tag, int count) {
    for (int number = 1; number <= count; ++number)
        tag.AddData(NString(L"_albumart_").Concat(NString::FromInt(number).Text).Text, &number, 4);
}
} // namespace

TEST(TagCheck, AValueMustComeBackAsItWasWritten) {
    EXPECT_TRUE(Holds(L"Anna", L"Anna"));
    EXPECT_FALSE(Holds(L"anna", L"Anna"));
    EXPECT_FALSE(Holds(L"Anna B", L"Anna"));
}

TEST(TagCheck, PartsMayComeBackInAnotherOrderOrJoined) {
    EXPECT_TRUE(Holds(L"B\rA", L"A\rB"));
    EXPECT_TRUE(Holds(L"A; B", L"A\rB"));
    EXPECT_FALSE(Holds(L"A", L"A\rB"));
    EXPECT_FALSE(Holds(L"A\rB\rC", L"A\rB"));
}

TEST(TagCheck, AnElementWrittenWithoutAValueMustBeAbsent) {
    clTagRecord tag;
    clTagElement element;
    element.Name = L"artist";
    EXPECT_TRUE(HoldsElement(tag, element));
    tag.Add(L"artist", L"Anna");
    EXPECT_FALSE(HoldsElement(tag, element));
}

TEST(TagCheck, APictureIsFoundByItsBytesUnderAnyNumber) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1_Front Album Cover", "bytes", 5);
    clTagElement element;
    element.Name = L"_albumart_7";
    element.Data.Set("bytes", 5);
    EXPECT_TRUE(HoldsElement(tag, element));
    element.Data.Data[0] = 'B';
    EXPECT_FALSE(HoldsElement(tag, element));
}

TEST(TagCheck, ADeletedElementMustBeAbsent) {
    clTagRecord before;
    clTagRecord after;
    before.Add(L"title", L"x");
    EXPECT_TRUE(IsGone(before, after, L"title"));
    after.Add(L"title", L"x");
    EXPECT_FALSE(IsGone(before, after, L"title"));
}

TEST(TagCheck, OfDeletedPicturesTheNumberTells) {
    clTagRecord three;
    clTagRecord two;
    AddPictures(three, 3);
    AddPictures(two, 2);
    EXPECT_TRUE(IsGone(three, two, L"_albumart_1"));
    EXPECT_FALSE(IsGone(three, three, L"_albumart_1"));
}
