// The rows of each view.
#include "tests/tagpage/tag_page_fixture.h"

#include <algorithm>
#include <iterator>

namespace {
const Texts FixedRows = {L"Artist=", L"Title=", L"Album=",  L"Track=",
                         L"Year=",   L"Genre=", L"Comment="};

class PageRows : public TagPageTest {
protected:
    void OpenOne(std::initializer_list<TagText> elements) {
        AddFile(A, elements);
        window_.OpenAndRead();
    }
    void OpenOne(clTagRecord& tag) {
        AddFile(A, tag);
        window_.OpenAndRead();
    }
    // Without the title, and from the spacer above the pictures on.
    Texts TextRows() { return RowsFrom(1, RowOfSpacer()); }
    Texts ArtRows() { return RowsFrom(RowOfSpacer() + 1, List().rows.Count()); }
    int RowOfSpacer() { return window_.RowOf(L"Album Art") - 1; }
    Texts RowsFrom(int first, int end) {
        const Texts all = window_.Rows();
        return {all.begin() + first, all.begin() + end};
    }
    std::wstring TitleRow() { return window_.Rows().at(0); }
    NValueRow& RowAt(int index) { return *List().rows[index]; }
};

Texts WithOthers(std::initializer_list<const wchar_t*> others) {
    Texts rows = FixedRows;
    rows.insert(rows.end(), others.begin(), others.end());
    return rows;
}

Texts ChoicesOf(const NValueRow& row) {
    Texts texts;
    for (int index = 0; index < row.choices.Count; ++index)
        texts.push_back(row.choices[index]->Text);
    return texts;
}
} // namespace

TEST_F(PageRows, AnEmptyTagHasWordsAndSevenEmptyRows) {
    OpenOne({});
    Texts rows = {L"Tonewright: 'a' ID-Tag =", L"  <Contains no ID-Tags>="};
    rows.insert(rows.end(), FixedRows.begin(), FixedRows.end());
    rows.insert(rows.end(), {L"=", L"Album Art=", L"="});
    EXPECT_EQ(window_.Rows(), rows);
    EXPECT_TRUE(static_cast<NDrawList::Text*>(List().rows[1]->scene.texts.Items.At(0))->bold);
    EXPECT_FALSE(static_cast<NDrawList::Text*>(List().rows[2]->scene.texts.Items.At(0))->bold);
}

TEST_F(PageRows, EachHasItsKindAndItsTag) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1_Front", "PNG", 3);
    OpenOne(tag);
    struct Expected {
        const wchar_t* name;
        int32_t kind;
        int64_t tag;
        const wchar_t* button;
    };
    const Expected rows[] = {
        {L"Tonewright: 'a' ID-Tag ", Title, RowTagNone, L""},
        {L"Artist", Edit, RowTagText, L""},
        {L"Title", Edit, RowTagText, L""},
        {L"Album", Edit, RowTagText, L""},
        {L"Track", ComboEdit, RowTagText, L""},
        {L"Year", ComboEdit, RowTagText, L""},
        {L"Genre", ComboEdit, RowTagText, L""},
        {L"Comment", Edit, RowTagText, L""},
        {L"", Plain, RowTagNone, L""},
        {L"Album Art", Heading, RowTagNone, L""},
        {L"Art 1", Plain, RowTagArt, L"View"},
        {L"", Plain, RowTagNone, L"Add Album Art"},
    };
    ASSERT_EQ(List().rows.Count(), static_cast<int>(std::size(rows)));
    for (int index = 0; index < List().rows.Count(); ++index) {
        const NValueRow& row = RowAt(index);
        EXPECT_EQ(row.name, rows[index].name);
        EXPECT_EQ(row.kind, rows[index].kind) << index;
        EXPECT_EQ(row.tag, rows[index].tag) << index;
        EXPECT_EQ(row.buttonText, rows[index].button);
        EXPECT_FALSE(row.readOnly);
        EXPECT_EQ(row.onChange != nullptr, row.tag == RowTagText) << index;
        EXPECT_EQ(row.onButton != nullptr, !row.buttonText.IsEmpty()) << index;
    }
}

TEST_F(PageRows, TheirTagsAreNumbered) {
    EXPECT_EQ(RowTagNone, 0);
    EXPECT_EQ(RowTagText, 1);
    EXPECT_EQ(RowTagNoTags, 2);
    EXPECT_EQ(RowTagArt, 3);
}

TEST_F(PageRows, StandAtTheirPlaces) {
    OpenOne({});
    EXPECT_EQ(RowAt(0).nameX, 0x160004u);
    EXPECT_EQ(RowAt(1).tag, RowTagNoTags);
    EXPECT_EQ(RowAt(1).kind, Plain);
    EXPECT_EQ(RowAt(1).nameX, 6u);
    EXPECT_EQ(window_.Row(L"Artist").nameX, 6u);
    EXPECT_EQ(window_.Row(L"Album Art").nameX, 6u);
    const NValueRow& add = RowAt(List().rows.Count() - 1);
    EXPECT_EQ(add.valueX, 8u);
    EXPECT_EQ(add.valueWidth, 100);
    // Others take the list's own places.
    EXPECT_EQ(RowAt(RowOfSpacer()).nameX, 28u);
    EXPECT_EQ(add.nameX, 28u);
    EXPECT_EQ(window_.Row(L"Artist").valueX, 80u);
}

TEST_F(PageRows, OfAFixedNameHaveTheElementsOwnSpelling) {
    OpenOne({{L"ARTIST", L"Me"}, {L"comment", L"Said"}, {L"gEnRe", L"Pop"}});
    EXPECT_EQ(TextRows(), (Texts{L"ARTIST=Me", L"Title=", L"Album=", L"Track=", L"Year=",
                                 L"gEnRe=Pop", L"comment=Said"}));
}

TEST_F(PageRows, OfAFixedNameShowItsFirstElementAlone) {
    OpenOne({{L"Title", L"One"}, {L"title", L"Two"}});
    EXPECT_EQ(window_.Row(L"Title").value, L"One");
    EXPECT_EQ(window_.RowOf(L"title"), -1);
}

TEST_F(PageRows, OtherElementsFollowTheFixedOnesAndAreSorted) {
    OpenOne({{L"mood", L"glad"}, {L"Aaa", L"1"}, {L"Title", L"One"}, {L"Band", L"They"}});
    Texts rows = WithOthers({L"Aaa=1", L"Band=They", L"mood=glad"});
    rows[1] = L"Title=One";
    EXPECT_EQ(TextRows(), rows);
}

TEST_F(PageRows, OfANameThatIsThereTwiceAreFour) {
    OpenOne({{L"mood", L"glad"}, {L"mood", L"sad"}});
    EXPECT_EQ(TextRows(), WithOthers({L"mood=glad", L"mood=sad", L"mood=glad", L"mood=sad"}));
}

// Four, sixteen, two hundred and fifty-six, ...
TEST_F(PageRows, OfANameThatIsThereTwiceDoNotGrowWithoutEnd) {
    constexpr int most = 1000;
    AddFile(A, {{L"Mood", L"One"}, {L"Mood", L"Two"}, {L"Zest", L"Three"}});
    AddFile(B);
    window_.OpenAndRead();
    for (int visit = 0; visit < 6; ++visit) {
        ShowSingle();
        EXPECT_LE(List().rows.Count(), most + 12);
        ShowSingle();
    }
    window_.Apply();
    EXPECT_EQ(tags_.ValueOf(A, L"Zest"), L"Three");
    EXPECT_NE(tags_.ValueOf(A, L"Mood"), L"(none)");
}

TEST_F(PageRows, OfANameInTwoSpellingsAreTwo) {
    OpenOne({{L"mood", L"glad"}, {L"MOOD", L"sad"}});
    Texts rows = TextRows();
    std::sort(rows.begin() + 7, rows.end());
    EXPECT_EQ(rows, WithOthers({L"MOOD=sad", L"mood=glad"}));
}

TEST_F(PageRows, AnElementWithDataHasNone) {
    clTagRecord tag;
    tag.AddData(L"Comment", "x", 1);
    tag.Current()->Value = L"hidden";
    tag.AddData(L"mood", "x", 1);
    OpenOne(tag);
    EXPECT_EQ(TextRows(), FixedRows);
}

TEST_F(PageRows, AnElementWithDataLeavesTheFixedRowToTheNext) {
    clTagRecord tag;
    tag.AddData(L"Comment", "x", 1);
    tag.Add(L"COMMENT", L"Said");
    OpenOne(tag);
    EXPECT_EQ(window_.Row(L"COMMENT").value, L"Said");
    EXPECT_EQ(window_.RowOf(L"Comment"), -1);
}

TEST_F(PageRows, WhereOneOfANameHasNoDataAllOfItAreShown) {
    clTagRecord tag;
    tag.Add(L"mood", L"glad");
    tag.AddData(L"mood", "x", 1);
    tag.Current()->Value = L"with data";
    OpenOne(tag);
    EXPECT_EQ(TextRows(), WithOthers({L"mood=glad", L"mood=with data"}));
}

TEST_F(PageRows, PartsOfAValueStandWithASemicolonBetweenThem) {
    OpenOne({{L"Artist", L"One\rTwo\rThree"}});
    EXPECT_EQ(window_.Row(L"Artist").value, L"One; Two; Three");
}

TEST_F(PageRows, ARatingIsShownInSteps) {
    OpenOne({{L"Rating", L"7"}});
    EXPECT_EQ(window_.Row(L"Rating").value, L"3.5");
}

TEST_F(PageRows, SpecialElementsThatAreNoPicturesHaveNone) {
    OpenOne({{L"_cdtoc", L"1"}, {L"_riff_INAM", L"2"}, {L"_other", L"3"}});
    EXPECT_EQ(window_.RowOf(L"  <Contains no ID-Tags>"), 1);
    EXPECT_EQ(RowsFrom(2, RowOfSpacer()), FixedRows);
}

TEST_F(PageRows, OfTrackYearAndGenreOfferChoicesInAnyCapitals) {
    OpenOne({{L"TRACK", L"1"}, {L"yEAR", L"2"}, {L"GENRE", L"3"}, {L"GenreX", L"4"}});
    EXPECT_EQ(ChoicesOf(window_.Row(L"TRACK")).size(), 99u);
    EXPECT_EQ(ChoicesOf(window_.Row(L"yEAR")).back(), L"1920");
    EXPECT_EQ(ChoicesOf(window_.Row(L"GENRE")).size(), 126u);
    EXPECT_EQ(window_.Row(L"GENRE").kind, ComboEdit);
    EXPECT_EQ(window_.Row(L"GenreX").kind, Edit);
    EXPECT_EQ(ChoicesOf(window_.Row(L"GenreX")), Texts());
    EXPECT_EQ(ChoicesOf(window_.Row(L"Artist")), Texts());
}

TEST_F(PageRows, OfPicturesStandUnderTheirHeading) {
    clTagRecord tag;
    tag.AddData(L"_albumart_2_Back", "two", 3);
    tag.AddData(L"_albumart_1_Front Album Cover", "one", 3);
    OpenOne(tag);
    EXPECT_EQ(TextRows(), FixedRows);
    EXPECT_EQ(ArtRows(), (Texts{L"Album Art=", L"Art 1=Front Album Cover", L"Art 2=Back", L"="}));
}

TEST_F(PageRows, PicturesBehindAGapInTheNumbersAreNotShown) {
    clTagRecord tag;
    for (const wchar_t* name : {L"_albumart_1", L"_albumart_2", L"_albumart_4"})
        tag.AddData(name, "x", 1);
    OpenOne(tag);
    EXPECT_EQ(ArtRows(), (Texts{L"Album Art=", L"Art 1=", L"Art 2=", L"="}));
}

TEST_F(PageRows, NoMoreThan99PicturesAreShown) {
    clTagRecord tag;
    for (int number = 1; number <= 101; ++number)
        tag.AddData((L"_albumart_" + std::to_wstring(number)).c_str(), "x", 1);
    OpenOne(tag);
    EXPECT_EQ(ArtRows().size(), 1u + 99u + 1u);
    EXPECT_EQ(window_.RowOf(L"Art 100"), -1);
}

TEST_F(PageRows, ATagOfAPictureAloneIsNotEmpty) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1", "x", 1);
    OpenOne(tag);
    EXPECT_EQ(window_.RowOf(L"  <Contains no ID-Tags>"), -1);
}

TEST_F(PageRows, TwoFilesAreShownInOneAtFirst) {
    AddFile(A, {{L"Title", L"One"}, {L"Album", L"Same"}});
    AddFile(B, {{L"Title", L"Two"}, {L"Album", L"Same"}, {L"mood", L"glad"}});
    window_.OpenAndRead();
    EXPECT_EQ(window_.Rows(), (Texts{L"Tonewright: ID-Tags From 2 Files =", L"Artist=",
                                     L"Title=<different>", L"Album=Same", L"Track=", L"Year=",
                                     L"Genre=", L"Comment=", L"mood=<different>"}));
}

TEST_F(PageRows, TwoFilesWithoutTagsHaveTheWords) {
    AddFile(A);
    AddFile(B);
    window_.OpenAndRead();
    EXPECT_EQ(window_.RowOf(L"  <Contains no ID-Tags>"), 1);
    EXPECT_EQ(List().rows.Count(), 9);
}

TEST_F(PageRows, OneOfTwoFilesIsShownWithItsNumber) {
    AddFile(A, {{L"Title", L"One"}});
    AddFile(B, {{L"Title", L"Two"}});
    window_.OpenAndRead();
    ShowSingle();
    EXPECT_EQ(TitleRow(), L"Tonewright: 'a' ID-Tag [1/2] =");
    EXPECT_EQ(window_.Row(L"Title").value, L"One");
    Page().cmdSkipNext.OnClick(false);
    EXPECT_EQ(TitleRow(), L"Tonewright: 'b' ID-Tag [2/2] =");
    EXPECT_EQ(window_.Row(L"Title").value, L"Two");
    EXPECT_NE(window_.RowOf(L"Album Art"), -1);
}

TEST_F(PageRows, AFileThatIsNotReadIsEmpty) {
    AddFile(A, {{L"Title", L"One"}});
    AddFile(B);
    tags_.SetNoReply(B);
    window_.OpenAndRead();
    EXPECT_EQ(window_.Row(L"Title").value, L"<different>");
    ShowSingle();
    Page().cmdSkipNext.OnClick(false);
    EXPECT_EQ(RowsFrom(2, RowOfSpacer()), FixedRows);
    EXPECT_EQ(window_.RowOf(L"  <Contains no ID-Tags>"), 1);
}

TEST_F(PageRows, AreBuiltAnewEachTime) {
    OpenOne({{L"Title", L"One"}});
    const Texts rows = window_.Rows();
    Page().BuildRows();
    Page().BuildRows();
    EXPECT_EQ(window_.Rows(), rows);
    EXPECT_EQ(SendMessageW(List().listBox, LB_GETCOUNT, 0, 0), static_cast<LRESULT>(rows.size()));
}
