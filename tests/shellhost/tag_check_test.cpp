#include "suite/shellhost/tag_check.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <initializer_list>

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

NString Left(clTagRecord& before, clTagRecord& after, std::initializer_list<const wchar_t*> names) {
    NStringList all;
    for (const wchar_t* name : names)
        all.Add(name);
    NStringList left;
    FindLeft(before, after, all, left);
    return left.Join(L"|");
}

NString LeftOfPictures(int before, int after, std::initializer_list<const wchar_t*> names) {
    clTagRecord first;
    clTagRecord second;
    AddPictures(first, before);
    AddPictures(second, after);
    return Left(first, second, names);
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

TEST(TagCheck, BytesOfAnotherKindAreNotThoseAskedFor) {
    clTagElement picture;
    picture.Name = L"_albumart_1";
    picture.Data.Set("bytes", 5);
    clTagElement contents = picture;
    contents.Name = L"_cdtoc";
    clTagRecord tag;
    tag.AddCopy(contents);
    EXPECT_FALSE(HoldsElement(tag, picture));
    EXPECT_TRUE(HoldsElement(tag, contents));
    tag.Clear();
    tag.AddCopy(picture);
    EXPECT_FALSE(HoldsElement(tag, contents));
    EXPECT_TRUE(HoldsElement(tag, picture));
}

TEST(TagCheck, ADeletedElementMustBeAbsent) {
    clTagRecord before;
    clTagRecord after;
    before.Add(L"title", L"x");
    before.Add(L"artist", L"y");
    EXPECT_EQ(Left(before, after, {L"title", L"artist"}), L"");
    after.Add(L"Title", L"x");
    EXPECT_EQ(Left(before, after, {L"title", L"artist"}), L"title");
}

TEST(TagCheck, OfDeletedPicturesTheNumberTells) {
    EXPECT_EQ(LeftOfPictures(3, 2, {L"_albumart_1"}), L"");
    EXPECT_EQ(LeftOfPictures(3, 3, {L"_albumart_1"}), L"_albumart_1");
    EXPECT_EQ(LeftOfPictures(3, 1, {L"_albumart_1", L"_albumart_2"}), L"");
    EXPECT_EQ(LeftOfPictures(3, 2, {L"_albumart_1", L"_albumart_2"}), L"_albumart_1|_albumart_2");
}

TEST(TagCheck, APictureThatWasNotThereOrIsNamedTwiceCountsNoFurther) {
    EXPECT_EQ(LeftOfPictures(2, 2, {L"_albumart_3"}), L"");
    EXPECT_EQ(LeftOfPictures(2, 1, {L"_albumart_1", L"_albumart_3"}), L"");
    EXPECT_EQ(LeftOfPictures(2, 1, {L"_albumart_1", L"_ALBUMART_1_Front Album Cover"}), L"");
    EXPECT_EQ(LeftOfPictures(12, 11, {L"_albumart_1"}), L"");
}

TEST(TagCheck, APictureThatWentIsNotTakenForOtherBytes) {
    clTagRecord before;
    clTagRecord after;
    before.AddData(L"_cdtoc", "toc", 3);
    after.CopyFrom(before);
    AddPictures(before, 1);
    EXPECT_EQ(Left(before, after, {L"_cdtoc", L"_albumart_1"}), L"_cdtoc");
}
