#include "suite/tagmap/lesser_tags.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

// One tag's pictures, and another's that has two of them in another order.
class LesserTags : public testing::Test {
protected:
    LesserTags() {
        AddBytes(first_, L"_albumart_1_Back Album Cover", "back");
        AddBytes(first_, L"_albumart_2_Front Album Cover", "front");
        AddBytes(first_, L"_albumart_3_Media", "disc");
        first_.Add(L"title", L"t");
        AddBytes(lesser_, L"_albumart_1_Front Album Cover", "front");
        AddBytes(lesser_, L"_albumart_2_Back Album Cover", "other back");
    }

    std::wstring Renumbered() {
        clTagRecord renumbered;
        RenumberPictures(first_, lesser_, changes_, renumbered);
        return NamesOf(renumbered);
    }
    std::wstring RenumberedName(const wchar_t* name) {
        NStringList names;
        NStringList renumbered;
        names.Add(name);
        RenumberPictures(first_, lesser_, names, renumbered);
        return renumbered.Join(L"|").c_str();
    }

    clTagRecord first_;
    clTagRecord lesser_;
    clTagRecord changes_;
};

} // namespace

TEST_F(LesserTags, APictureIsKnownByItsBytes) {
    AddBytes(changes_, L"_albumart_2_Front Album Cover", "new");
    EXPECT_EQ(Renumbered(), L"_albumart_1_Front Album Cover");
}

TEST_F(LesserTags, APictureOfOtherBytesIsKnownByItsDescription) {
    AddBytes(changes_, L"_albumart_1_Band", "new");
    EXPECT_EQ(Renumbered(), L"_albumart_2_Band");
}

TEST_F(LesserTags, OfTwoPicturesOfTheSameBytesTheDescriptionTells) {
    AddBytes(first_, L"_albumart_4_Band", "same");
    AddBytes(lesser_, L"_albumart_3_Conductor", "same");
    AddBytes(lesser_, L"_albumart_4_Band", "same");
    EXPECT_EQ(RenumberedName(L"_albumart_4"), L"_albumart_4");
}

TEST_F(LesserTags, APictureThatIsNotThereIsLeftOut) {
    AddBytes(changes_, L"_albumart_3_Media", "new");
    changes_.Add(L"title", L"x");
    EXPECT_EQ(Renumbered(), L"title");
}

TEST_F(LesserTags, APictureBehindAllOthersIsSoThereToo) {
    AddBytes(changes_, L"_albumart_4_Band", "new");
    AddBytes(changes_, L"_albumart_7_Media", "newer");
    EXPECT_EQ(Renumbered(), L"_albumart_900000004_Band|_albumart_900000007_Media");
}

TEST_F(LesserTags, BytesAndTextsOfTheRequestStay) {
    AddBytes(changes_, L"_albumart_2", "new");
    changes_.Add(L"artist", L"a");
    clTagRecord renumbered;
    RenumberPictures(first_, lesser_, changes_, renumbered);
    EXPECT_EQ(DataOf(renumbered, L"_albumart_1"), "new");
    EXPECT_EQ(ValueOf(renumbered, L"artist"), L"a");
}

TEST_F(LesserTags, WithoutPicturesInTheFirstNumbersAreRightAsTheyAre) {
    first_.Clear();
    AddBytes(changes_, L"_albumart_2", "new");
    EXPECT_EQ(Renumbered(), L"_albumart_2");
    EXPECT_EQ(RenumberedName(L"_albumart_2"), L"_albumart_2");
}

TEST_F(LesserTags, NamesToDeleteAreRenumberedToo) {
    EXPECT_EQ(RenumberedName(L"_albumart_2_Front Album Cover"), L"_albumart_1_Front Album Cover");
    EXPECT_EQ(RenumberedName(L"_albumart_1"), L"_albumart_2");
    EXPECT_EQ(RenumberedName(L"_albumart_3"), L"");
    EXPECT_EQ(RenumberedName(L"artist"), L"artist");
}

TEST_F(LesserTags, AListThatNamesNothingInTheLesserTagDeletesNothing) {
    const auto read = [](clTagRecord& tag, clTagRecord& record) { record.CopyFrom(tag); };
    int calls = 0;
    const auto remove = [&](clTagRecord&, const NStringList& names) {
        EXPECT_EQ(names.Count, 0);
        ++calls;
    };
    NStringList names;
    names.Add(L"_albumart_3");
    DeleteFromLesser(first_, names, read, remove, lesser_);
    EXPECT_EQ(calls, 0);
    DeleteFromLesser(first_, NStringList(), read, remove, lesser_);
    EXPECT_EQ(calls, 1);
}

TEST_F(LesserTags, PicturesOfTheFirstTagStandForThoseOfTheLesser) {
    clTagRecord title;
    AddMissing(title, lesser_);
    EXPECT_EQ(NamesOf(title), L"_albumart_1_Front Album Cover|_albumart_2_Back Album Cover");
    lesser_.Add(L"artist", L"a");
    lesser_.Add(L"title", L"other");
    AddMissing(first_, lesser_);
    EXPECT_EQ(NamesOf(first_), L"_albumart_1_Back Album Cover|_albumart_2_Front Album Cover|"
                               L"_albumart_3_Media|title|artist");
    EXPECT_EQ(ValueOf(first_, L"title"), L"t");
}

TEST_F(LesserTags, ShownPicturesAreTakenOverBeforeOthersAreSet) {
    const auto read = [](clTagRecord& tag, clTagRecord& record) { record.CopyFrom(tag); };
    std::wstring taken;
    const auto take = [&](clTagRecord& pictures) { taken = NamesOf(pictures); };
    clTagRecord empty;
    lesser_.Add(L"title", L"x");
    TakeOverPictures(empty, changes_, read, lesser_, take);
    EXPECT_EQ(taken, L"");
    AddBytes(changes_, L"_albumart_3", "new");
    TakeOverPictures(first_, changes_, read, lesser_, take);
    EXPECT_EQ(taken, L"");
    TakeOverPictures(empty, changes_, read, lesser_, take);
    EXPECT_EQ(taken, L"_albumart_1_Front Album Cover|_albumart_2_Back Album Cover");
    EXPECT_EQ(NamesOf(empty), taken);
}

} // namespace tagmap
