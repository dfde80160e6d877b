#include "tagpage/changed_elements.h"
#include "tests/tagpage/tag_texts.h"

#include <gtest/gtest.h>

namespace {
class ChangedElements : public testing::Test {
protected:
    Texts Changed() {
        clTagRecord changed;
        AddChangedElements(wanted_, inFile_, changed);
        return TextsOf(changed);
    }

    clTagRecord wanted_;
    clTagRecord inFile_;
};
} // namespace

TEST_F(ChangedElements, AreThoseThatTheFileLacksOrHasOtherwise) {
    FillTag(wanted_, {{L"title", L"One"}, {L"album", L"New"}, {L"mood", L"glad"}});
    FillTag(inFile_, {{L"album", L"Old"}, {L"title", L"One"}});
    EXPECT_EQ(Changed(), (Texts{L"album=New", L"mood=glad"}));
}

TEST_F(ChangedElements, OfAFileWithoutATagAreAll) {
    FillTag(wanted_, {{L"title", L"One"}, {L"album", L"Two"}});
    EXPECT_EQ(Changed(), (Texts{L"title=One", L"album=Two"}));
}

TEST_F(ChangedElements, DoNotHoldWhatIsMissing) {
    FillTag(inFile_, {{L"title", L"One"}});
    EXPECT_EQ(Changed(), Texts());
}

TEST_F(ChangedElements, AValueInOtherCapitalsIsAnother) {
    FillTag(wanted_, {{L"title", L"one"}});
    FillTag(inFile_, {{L"title", L"One"}});
    EXPECT_EQ(Changed(), Texts{L"title=one"});
}

TEST_F(ChangedElements, ANameInOtherCapitalsIsTheSame) {
    FillTag(wanted_, {{L"TITLE", L"One"}});
    FillTag(inFile_, {{L"title", L"One"}});
    EXPECT_EQ(Changed(), Texts());
}

TEST_F(ChangedElements, AValueThatHoldsTheMarkIsNoWish) {
    FillTag(
        wanted_,
        {{L"title", L"<different>"}, {L"album", L"a <different> b"}, {L"mood", L"<DIFFERENT>"}});
    EXPECT_EQ(Changed(), Texts{L"mood=<DIFFERENT>"});
}

TEST_F(ChangedElements, AnEmptyValueIsOneLikeAnyOther) {
    FillTag(wanted_, {{L"title", L""}, {L"album", L""}});
    FillTag(inFile_, {{L"title", L"One"}, {L"album", L""}});
    EXPECT_EQ(Changed(), Texts{L"title="});
}

TEST_F(ChangedElements, WhereTheFileHasDataTheyAloneDecide) {
    wanted_.AddData(L"_albumart_1", "PNG", 3);
    wanted_.Current()->Value = L"other";
    inFile_.AddData(L"_albumart_1", "PNG", 3);
    EXPECT_EQ(Changed(), Texts());
    inFile_[0]->Data.Set("PNJ", 3);
    EXPECT_EQ(Changed(), Texts{L"_albumart_1=other:PNG"});
    inFile_[0]->Data.Set("PNGG", 4);
    EXPECT_EQ(Changed(), Texts{L"_albumart_1=other:PNG"});
}

TEST_F(ChangedElements, ATextInPlaceOfDataIsWrittenEachTime) {
    FillTag(wanted_, {{L"comment", L"Said"}});
    inFile_.AddData(L"comment", "x", 1);
    inFile_[0]->Value = L"Said";
    EXPECT_EQ(Changed(), Texts{L"comment=Said"});
}

TEST_F(ChangedElements, WhereTheFileHasNoDataTheValuesDecide) {
    wanted_.AddData(L"_albumart_1", "PNG", 3);
    FillTag(inFile_, {{L"_albumart_1", L""}});
    EXPECT_EQ(Changed(), Texts());
}

TEST_F(ChangedElements, APictureUnderANewNameIsWritten) {
    wanted_.AddData(L"_albumart_2_Back", "PNG", 3);
    inFile_.AddData(L"_albumart_1_Back", "PNG", 3);
    EXPECT_EQ(Changed(), Texts{L"_albumart_2_Back=:PNG"});
}

TEST_F(ChangedElements, AreComparedWithTheFirstElementOfTheName) {
    FillTag(wanted_, {{L"mood", L"glad"}, {L"mood", L"sad"}});
    FillTag(inFile_, {{L"mood", L"glad"}, {L"mood", L"sad"}});
    EXPECT_EQ(Changed(), Texts{L"mood=sad"});
}
