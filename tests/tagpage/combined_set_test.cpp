#include "tagpage/combined_set.h"
#include "tests/tagpage/tag_texts.h"

#include <gtest/gtest.h>

namespace {
class CombinedTags : public testing::Test {
protected:
    void Merge(std::initializer_list<TagText> elements) {
        clTagRecord file;
        FillTag(file, elements);
        MergeIntoCombined(files_++, file, true, combined_);
    }
    void MergeOneThatIsNotRead() {
        clTagRecord file;
        MergeIntoCombined(files_++, file, false, combined_);
    }
    Texts Combined() { return TextsOf(combined_); }

    clTagRecord combined_;

private:
    int files_ = 0;
};
} // namespace

TEST_F(CombinedTags, TheirLiteralsAreFixed) {
    EXPECT_STREQ(CombinedName, L"<combined>");
    EXPECT_STREQ(DifferentMark, L"<different>");
}

TEST_F(CombinedTags, OfOneFileAreACopyOfItsTexts) {
    Merge({{L"Title", L"One"}, {L"comment", L""}, {L"ALBUM", L"Two"}});
    EXPECT_EQ(Combined(), (Texts{L"Title=One", L"ALBUM=Two"}));
}

TEST_F(CombinedTags, ShowAValueThatAllFilesHave) {
    Merge({{L"album", L"Same"}});
    Merge({{L"album", L"Same"}});
    Merge({{L"album", L"Same"}});
    EXPECT_EQ(Combined(), Texts{L"album=Same"});
}

TEST_F(CombinedTags, StayDifferentThoughAThirdFileAgreesWithTheFirst) {
    Merge({{L"album", L"Same"}});
    Merge({{L"album", L"Other"}});
    EXPECT_EQ(Combined(), Texts{L"album=<different>"});
    Merge({{L"album", L"Same"}});
    EXPECT_EQ(Combined(), Texts{L"album=<different>"});
}

TEST_F(CombinedTags, DifferWhereALaterFileLacksTheElement) {
    Merge({{L"title", L"One"}, {L"mood", L"glad"}});
    Merge({{L"title", L"One"}});
    EXPECT_EQ(Combined(), (Texts{L"title=One", L"mood=<different>"}));
}

TEST_F(CombinedTags, DifferWhereALaterFileBringsTheElement) {
    Merge({{L"title", L"One"}});
    Merge({{L"mood", L"glad"}, {L"title", L"One"}});
    EXPECT_EQ(Combined(), (Texts{L"title=One", L"mood=<different>"}));
}

TEST_F(CombinedTags, KeepTheValueThoughALaterFileHasTheElementEmpty) {
    Merge({{L"comment", L"Said"}});
    Merge({{L"comment", L""}});
    EXPECT_EQ(Combined(), Texts{L"comment=Said"});
}

TEST_F(CombinedTags, DifferWhereTheFirstFileHasTheElementEmpty) {
    Merge({{L"comment", L""}});
    Merge({{L"comment", L"Said"}});
    EXPECT_EQ(Combined(), Texts{L"comment=<different>"});
}

TEST_F(CombinedTags, ANameIsOneInAnyCapitalsInTheSpellingOfTheFirstFile) {
    Merge({{L"artist", L"Me"}});
    Merge({{L"ARTIST", L"Me"}});
    EXPECT_EQ(Combined(), Texts{L"artist=Me"});
}

TEST_F(CombinedTags, AValueInOtherCapitalsIsAnother) {
    Merge({{L"artist", L"Me"}});
    Merge({{L"artist", L"me"}});
    EXPECT_EQ(Combined(), Texts{L"artist=<different>"});
}

TEST_F(CombinedTags, StandInTheOrderOfTheirFirstAppearance) {
    Merge({{L"z", L"1"}, {L"a", L"2"}});
    Merge({{L"m", L"3"}, {L"a", L"2"}, {L"z", L"1"}});
    EXPECT_EQ(Combined(), (Texts{L"z=1", L"a=2", L"m=<different>"}));
}

TEST_F(CombinedTags, TheSameNameTwiceInAFileIsComparedWithItself) {
    Merge({{L"mood", L"glad"}, {L"mood", L"sad"}});
    EXPECT_EQ(Combined(), Texts{L"mood=<different>"});
}

TEST_F(CombinedTags, PicturesNeverComeIn) {
    clTagRecord file;
    file.AddData(L"_albumart_1", "PNG", 3);
    MergeIntoCombined(0, file, true, combined_);
    EXPECT_EQ(Combined(), Texts());
}

TEST_F(CombinedTags, AFileThatIsNotReadMakesAllBeforeItDifferent) {
    Merge({{L"title", L"One"}});
    MergeOneThatIsNotRead();
    EXPECT_EQ(Combined(), Texts{L"title=<different>"});
}

TEST_F(CombinedTags, AFirstFileThatIsNotReadMakesAllBehindItDifferent) {
    MergeOneThatIsNotRead();
    Merge({{L"title", L"One"}});
    Merge({{L"title", L"One"}});
    EXPECT_EQ(Combined(), Texts{L"title=<different>"});
}

TEST_F(CombinedTags, WhatAFileThatGaveNoReplyHoldsDoesNotComeIn) {
    clTagRecord file;
    FillTag(file, {{L"title", L"One"}});
    MergeIntoCombined(0, file, false, combined_);
    EXPECT_EQ(Combined(), Texts());
}

TEST_F(CombinedTags, AMarkInAFileIsAMark) {
    Merge({{L"title", L"<different>"}});
    EXPECT_EQ(Combined(), Texts{L"title=<different>"});
    EXPECT_TRUE(HoldsDifferentMark(L"<different>"));
    EXPECT_TRUE(HoldsDifferentMark(L"a <different> b"));
    EXPECT_FALSE(HoldsDifferentMark(L"<Different>"));
    EXPECT_FALSE(HoldsDifferentMark(L""));
}

TEST_F(CombinedTags, AnElementThatIsThereCanBeMarked) {
    Merge({{L"Title", L"One"}, {L"album", L"Two"}});
    MarkDifferent(combined_, L"TITLE");
    MarkDifferent(combined_, L"mood");
    EXPECT_EQ(Combined(), (Texts{L"Title=<different>", L"album=Two"}));
}
