// What the rows say goes into the sets, and from there into the other view.
#include "tagpage/combined_set.h"
#include "tests/tagpage/tag_page_fixture.h"

namespace {
class StoreEdits : public TagPageTest {
protected:
    void OpenTwo(std::initializer_list<TagText> first, std::initializer_list<TagText> second) {
        AddFile(A, first);
        AddFile(B, second);
        window_.OpenAndRead();
    }
    // As a user leaves it, for all that the edit is not ended yet.
    void Type(const wchar_t* name, const wchar_t* value) { window_.Type(name, value); }
    Texts Combined() { return SetTexts(CombinedName); }
};
} // namespace

// The table of what a row's value comes to, by view.

TEST_F(StoreEdits, InOneForAllAPlainValueGoesToEveryFile) {
    OpenTwo({{L"Title", L"One"}}, {{L"Album", L"Two"}});
    Type(L"Title", L"New");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=New"});
    EXPECT_EQ(SetTexts(B), (Texts{L"Album=Two", L"Title=New"}));
    EXPECT_EQ(Combined(), (Texts{L"Title=New", L"Album=<different>"}));
}

TEST_F(StoreEdits, InOneForAllAnUnchangedPlainValueGoesToEveryFileToo) {
    OpenTwo({{L"TITLE", L"Same"}}, {{L"title", L"Same"}});
    TagsOf(A).Clear();
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"TITLE=Same"});
    EXPECT_EQ(SetTexts(B), Texts{L"title=Same"});
}

TEST_F(StoreEdits, InOneForAllADifferentValueChangesNoFile) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}});
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=One"});
    EXPECT_EQ(SetTexts(B), Texts{L"Title=Two"});
    EXPECT_EQ(Combined(), Texts{L"Title=<different>"});
}

TEST_F(StoreEdits, InOneForAllAValueThatHoldsTheMarkChangesNoFile) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}});
    Type(L"Title", L"not <different> at all");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=One"});
    EXPECT_EQ(Combined(), Texts{L"Title=not <different> at all"});
}

TEST_F(StoreEdits, InOneForAllTheMarkInOtherCapitalsIsAValue) {
    OpenTwo({{L"Title", L"One"}}, {{L"Title", L"Two"}});
    Type(L"Title", L"<DIFFERENT>");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=<DIFFERENT>"});
    EXPECT_EQ(SetTexts(B), Texts{L"Title=<DIFFERENT>"});
}

TEST_F(StoreEdits, InOneForAllAnEmptyRowLeavesTheFilesAlone) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}});
    Type(L"Title", L"");
    Page().StoreEdits();
    EXPECT_EQ(Combined(), Texts());
    EXPECT_EQ(SetTexts(A), Texts{L"Title=Same"});
    EXPECT_EQ(SetTexts(B), Texts{L"Title=Same"});
    EXPECT_EQ(Page().TagSets[1]->DeleteNames.Count, 0);
}

TEST_F(StoreEdits, InOneFileAPlainValueIsThatFilesAlone) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}});
    ShowSingle();
    Type(L"Title", L"New");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=New"});
    EXPECT_EQ(SetTexts(B), Texts{L"Title=Same"});
    EXPECT_EQ(Combined(), Texts{L"Title=<different>"});
}

TEST_F(StoreEdits, InOneFileAValueThatIsThatOfAllLeavesItSo) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}});
    ShowSingle();
    Page().StoreEdits();
    EXPECT_EQ(Combined(), Texts{L"Title=Same"});
}

TEST_F(StoreEdits, InOneFileAnElementThatIsNewToAllIsDifferent) {
    OpenTwo({}, {});
    ShowSingle();
    Type(L"Title", L"New");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=New"});
    EXPECT_EQ(Combined(), Texts{L"Title=<different>"});
}

TEST_F(StoreEdits, InOneFileAnEmptyRowLosesTheElementAndTellsNobody) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}});
    ShowSingle();
    Type(L"Title", L"");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts());
    EXPECT_EQ(Combined(), Texts{L"Title=Same"});
    EXPECT_EQ(Page().CurrentSet().DeleteNames.Count, 0);
}

TEST_F(StoreEdits, InOneFileAMarkIsKeptAndTellsNobody) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}});
    ShowSingle();
    Type(L"Title", L"<different>");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=<different>"});
    EXPECT_EQ(Combined(), Texts{L"Title=Same"});
}

TEST_F(StoreEdits, InOneForAllTwoRowsOfANameStayTwoAndTheLastGoesToTheFiles) {
    OpenTwo({}, {});
    Page().AddTextRow(L"mood", L"glad");
    Page().AddTextRow(L"mood", L"sad");
    Page().StoreEdits();
    EXPECT_EQ(Combined(), (Texts{L"mood=glad", L"mood=sad"}));
    EXPECT_EQ(SetTexts(A), Texts{L"mood=sad"});
}

// From view to view.

TEST_F(StoreEdits, AValueForAllIsSeenInEachFile) {
    OpenTwo({{L"Album", L"One"}}, {});
    Type(L"Album", L"New");
    ShowSingle();
    EXPECT_EQ(window_.Row(L"Album").value, L"New");
    Page().cmdSkipNext.OnClick(false);
    EXPECT_EQ(window_.Row(L"Album").value, L"New");
}

TEST_F(StoreEdits, ARowThatWasEmptiedForAllLeavesEachFilesValueVisible) {
    OpenTwo({{L"Album", L"Same"}}, {{L"Album", L"Same"}});
    Type(L"Album", L"");
    ShowSingle();
    EXPECT_EQ(window_.Row(L"Album").value, L"Same");
    Page().cmdSkipNext.OnClick(false);
    EXPECT_EQ(window_.Row(L"Album").value, L"Same");
}

TEST_F(StoreEdits, AChangeInOneFileMakesAllDifferentAndLeavesTheOthers) {
    OpenTwo({{L"Album", L"Same"}}, {{L"Album", L"Same"}});
    ShowSingle();
    Type(L"Album", L"New");
    ShowSingle();
    EXPECT_FALSE(Page().SingleView());
    EXPECT_EQ(window_.Row(L"Album").value, L"<different>");
    EXPECT_EQ(SetTexts(B), Texts{L"Album=Same"});
}

TEST_F(StoreEdits, AValueOfTwoPartsReadsTheSameAgain) {
    AddFile(A, {{L"Artist", L"One\rTwo"}});
    window_.OpenAndRead();
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Artist=One\rTwo"});
    Type(L"Artist", L"One; Two; Three");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Artist=One\rTwo\rThree"});
    Page().BuildRows();
    EXPECT_EQ(window_.Row(L"Artist").value, L"One; Two; Three");
}

TEST_F(StoreEdits, EachButtonOfTheViewStoresFirst) {
    for (const wchar_t* path : {A, B, C})
        AddFile(path);
    window_.OpenAndRead();
    ShowSingle();
    const auto typedThen = [this](const wchar_t* value, NButton& button) {
        const int32_t file = Page().CurrentFile;
        Type(L"Title", value);
        button.OnClick(false);
        return SetTexts(Page().Files[file]->Text);
    };
    EXPECT_EQ(typedThen(L"1", Page().cmdSkipLast), Texts{L"Title=1"});
    EXPECT_EQ(typedThen(L"2", Page().cmdSkipPrev), Texts{L"Title=2"});
    EXPECT_EQ(typedThen(L"3", Page().cmdSkipFirst), Texts{L"Title=3"});
    EXPECT_EQ(typedThen(L"4", Page().cmdSkipNext), Texts{L"Title=4"});
    EXPECT_EQ(typedThen(L"5", Page().cmdViewSingle), Texts{L"Title=5"});
}

// Pictures.

TEST_F(StoreEdits, PicturesStayBehindTheTexts) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1_Front", "one", 3);
    tag.Add(L"Title", L"One");
    tag.AddData(L"_AlbumArt_2", "two", 3);
    AddFile(A, tag);
    window_.OpenAndRead();
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), (Texts{L"Title=One", L"_albumart_1_Front=:one", L"_AlbumArt_2=:two"}));
}

TEST_F(StoreEdits, WhatHasDataAndIsNoPictureGoes) {
    clTagRecord tag;
    tag.AddData(L"Comment", "x", 1);
    tag.AddData(L"_albumart_1", "one", 3);
    tag.Add(L"_albumart_2", L"");
    AddFile(A, tag);
    window_.OpenAndRead();
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"_albumart_1=:one"});
}

TEST_F(StoreEdits, WithoutRowsThePicturesAloneAreLeft) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1", "one", 3);
    tag.Add(L"Title", L"One");
    AddFile(A, tag);
    window_.OpenAndRead();
    List().Clear();
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"_albumart_1=:one"});
}

TEST_F(StoreEdits, AnElementThatNoRowShowsIsLost) {
    AddFile(A, {{L"Title", L"One"}, {L"TITLE", L"Two"}});
    window_.OpenAndRead();
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=One"});
}

TEST_F(StoreEdits, RowsOfANameThatIsThereTwiceAreAllStored) {
    AddFile(A, {{L"mood", L"glad"}, {L"mood", L"sad"}});
    window_.OpenAndRead();
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), (Texts{L"mood=glad", L"mood=sad", L"mood=glad", L"mood=sad"}));
}

TEST_F(StoreEdits, TheEditIsEnded) {
    AddFile(A);
    window_.OpenAndRead();
    Type(L"Genre", L"Zydeco");
    ASSERT_NE(List().control.editor, nullptr);
    EXPECT_EQ(window_.Row(L"Genre").value, L"");
    Page().StoreEdits();
    EXPECT_EQ(List().control.editor, nullptr);
    EXPECT_EQ(SetTexts(A), Texts{L"Genre=Zydeco"});
}
