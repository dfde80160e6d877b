#include "audiopage/page_text.h"
#include "audiopage/row_painting.h"
#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "tests/audiopage/painted_canvas.h"
#include "tests/audiopage/screen_resolution.h"
#include "toolkit/nfont.h"
#include "toolkit/nicon.h"

#include <string>

namespace {
constexpr int PaperWidth = 400;
constexpr int PaperHeight = 60;

// Without a dialog, dialog units are pixels.
constexpr HWND NoDialog = nullptr;

constexpr int LabelX = 7;
constexpr int RowY = 20;
constexpr int ValueX = 120;

constexpr COLORREF LabelGrey = 0x646464;
constexpr COLORREF Black = 0;

// Paints one row, and draws what is expected of it by other means.
class PaintedRow : public testing::Test {
protected:
    PaintedRow() {
        stars_.LoadResource(IDB_STARS, NModuleInstance());
        row_.LabelX = LabelX;
        row_.Y = RowY;
        row_.ValueX = ValueX;
        row_.ValueWidth = 200;
        row_.Label = L"Artist";
    }

    void SetUp() override { ASSERT_EQ(stars_.Width(), 32); }

    // The picture of the row alone.
    Picture Painted() {
        NKeyedList<clPropRow> rows;
        *rows.Add() = row_;
        Paper paper(PaperWidth, PaperHeight);
        PaintPropRows(rows, paper.Dc(), NoDialog, stars_);
        return paper.Seen();
    }

    void Expect(int x, int y, const wchar_t* text, COLORREF colour, int height = 13) {
        NFont font;
        font.Create(expected_.Dc(), nullptr, height, colour);
        font.Select(expected_.Dc());
        font.DrawText(x, y, text);
    }
    void ExpectLabel() { Expect(LabelX, RowY, row_.Label.Text, LabelGrey); }
    void ExpectValue(const wchar_t* text) { Expect(ValueX, RowY, text, Black); }
    void ExpectCutValue(const wchar_t* text) {
        ExpectValue(text);
        ExpectIcon(ValueX + WidthOf(text) + 2);
    }
    void ExpectIcon(int x) {
        NIcon icon;
        ASSERT_TRUE(icon.Load(IDI_CUT_VALUE, 16, 16, NModuleInstance()));
        icon.Draw(expected_.Dc(), x, RowY);
    }
    void ExpectSame() { EXPECT_TRUE(SamePictures(Painted(), expected_.Seen())); }

    int WidthOf(const wchar_t* text, int height = 13) {
        NFont font;
        font.Create(expected_.Dc(), nullptr, height, Black);
        return font.TextWidth(text);
    }

    Paper expected_{PaperWidth, PaperHeight};
    NCanvas stars_;
    clPropRow row_;
};
} // namespace

TEST_F(PaintedRow, HasAGreyLabelAndABlackValue) {
    row_.Value = L"Anna";
    ExpectLabel();
    ExpectValue(L"Anna");
    ExpectSame();
}

TEST_F(PaintedRow, ALabelAtANegativePlaceEndsThere) {
    row_.LabelX = -103;
    row_.Value = L"Anna";
    Expect(103 - WidthOf(L"Artist"), RowY, L"Artist", LabelGrey);
    ExpectValue(L"Anna");
    ExpectSame();
}

TEST_F(PaintedRow, AnEmptyValuePaintsOnlyItsLabel) {
    ExpectLabel();
    ExpectSame();
}

TEST_F(PaintedRow, OfAValueOfTwoLinesTheFirstIsPaintedWithTheIconBehindIt) {
    row_.Value = L"One\rTwo";
    ExpectLabel();
    ExpectCutValue(L"One");
    ExpectSame();
}

TEST_F(PaintedRow, LineFeedsBehindACarriageReturnAreNoLines) {
    row_.Value = L"One\r\n\n";
    ExpectLabel();
    ExpectValue(L"One");
    ExpectSame();
}

TEST_F(PaintedRow, OneLineThatEndsInACarriageReturnHasNoIcon) {
    row_.Value = L"44.1 KHz\r";
    ExpectLabel();
    ExpectValue(L"44.1 KHz");
    ExpectSame();
}

TEST_F(PaintedRow, DotsAtTheEndOfAValueBecomeTheIcon) {
    row_.Value = L"And so on...";
    ExpectLabel();
    ExpectCutValue(L"And so on");
    ExpectSame();
}

TEST_F(PaintedRow, AValueNarrowerThanItsWidthIsWhole) {
    row_.Value = L"Wide value";
    row_.ValueWidth = WidthOf(L"Wide value") + 1;
    ExpectLabel();
    ExpectValue(L"Wide value");
    ExpectSame();
}

TEST_F(PaintedRow, AValueAsWideAsItsWidthLosesCharactersUntilItFitsWithDots) {
    row_.Value = L"iiiiiiiiiiii";
    row_.ValueWidth = WidthOf(row_.Value.Text);
    std::wstring kept(11, L'i');
    while (WidthOf((kept + L"...").c_str()) >= row_.ValueWidth)
        kept.pop_back();
    ASSERT_LT(kept.size(), 11u); // three dots are wider than a character
    ExpectLabel();
    ExpectCutValue(kept.c_str());
    ExpectSame();
}

TEST_F(PaintedRow, AFirstLineThatDoesNotFitWithItsDotsLosesCharacters) {
    row_.Value = L"Firstline\rSecond";
    row_.ValueWidth = WidthOf(L"Firstline...");
    ASSERT_LT(WidthOf(L"Firstlin..."), row_.ValueWidth);
    ExpectLabel();
    ExpectCutValue(L"Firstlin");
    ExpectSame();
}

TEST_F(PaintedRow, OfAnEmptyFirstLineTheIconIsPaintedAlone) {
    row_.Value = L"\rTwo";
    ExpectLabel();
    ExpectIcon(ValueX + 2);
    ExpectSame();
}

TEST_F(PaintedRow, AValueWithoutRoomForACharacterPaintsNothingAndNoIcon) {
    row_.Value = L"Anna";
    row_.ValueWidth = 1;
    ExpectLabel();
    ExpectSame();
}

namespace {
struct StarCase {
    const wchar_t* value;
    int litHalves; // of ten
};
constexpr StarCase StarCases[] = {
    {L"1", 1},   {L"2", 2},    {L"7", 7},  {L"9", 9},
    {L"10", 10}, {L"200", 10}, {L"-3", 0}, {L"7 of 10", 7},
};
} // namespace

TEST_F(PaintedRow, RatingWithAColonShowsHalfStars) {
    row_.Label = L"Rating:";
    for (const StarCase& one : StarCases) {
        SCOPED_TRACE(NString(one.value).ToNarrow());
        row_.Value = one.value;
        Paper expected(PaperWidth, PaperHeight);
        NFont font;
        font.Create(expected.Dc(), nullptr, 13, LabelGrey);
        font.DrawText(LabelX, RowY, L"Rating:");
        for (int half = 0; half < 10; ++half) {
            const int star = half < one.litHalves ? 0 : 16;
            const int side = half % 2 == 0 ? 0 : 8;
            stars_.Blit(expected.Dc(), ValueX + 8 * half, RowY, 8, 14, star + side, 0);
        }
        EXPECT_TRUE(SamePictures(Painted(), expected.Seen()));
    }
}

TEST_F(PaintedRow, ARatingOfZeroOrWithoutANumberShowsNothing) {
    row_.Label = L"Rating:";
    ExpectLabel();
    for (const wchar_t* value : {L"0", L"none", L"-"}) {
        row_.Value = value;
        ExpectSame();
    }
}

TEST_F(PaintedRow, AnEmptyRatingIsNotRated) {
    row_.Label = L"Rating:";
    ExpectLabel();
    Expect(ValueX - WidthOf(L"Not Rated", 12) / 2 + 40, RowY + 2, L"Not Rated", 0xA0A0A0, 12);
    ExpectSame();
}

// The page's own rating row, on which no stars are wanted.
TEST_F(PaintedRow, RatingWithoutAColonIsATextLikeAnyOther) {
    row_.Label = L"Rating";
    row_.Value = L"7";
    ExpectLabel();
    ExpectValue(L"7");
    ExpectSame();
    row_.Label = L"rating:";
    expected_.Clear();
    ExpectLabel();
    ExpectValue(L"7");
    ExpectSame();
}

TEST_F(PaintedRow, WithoutItsStarsARatingShowsNothing) {
    stars_.Release();
    row_.Label = L"Rating:";
    row_.Value = L"7";
    ExpectLabel();
    ExpectSame();
}

TEST_F(PaintedRow, EachRowOfAListIsPainted) {
    NKeyedList<clPropRow> rows;
    row_.Value = L"Anna";
    *rows.Add() = row_;
    row_.Label = L"Title";
    row_.Value = L"Song";
    row_.Y = 40;
    *rows.Add() = row_;
    Paper paper(PaperWidth, PaperHeight);
    PaintPropRows(rows, paper.Dc(), NoDialog, stars_);
    Expect(LabelX, RowY, L"Artist", LabelGrey);
    Expect(ValueX, RowY, L"Anna", Black);
    Expect(LabelX, 40, L"Title", LabelGrey);
    Expect(ValueX, 40, L"Song", Black);
    EXPECT_TRUE(SamePictures(paper.Seen(), expected_.Seen()));
}

TEST_F(PaintedRow, AllButNotRatedIsScaledToTheScreensLinesPerInch) {
    const ScreenResolution screen(125);
    row_.Label = L"Rating:";
    // 13 * 125 / 96 is 16.9.
    Expect(LabelX, RowY, L"Rating:", LabelGrey, 16);
    Expect(ValueX - WidthOf(L"Not Rated", 12) / 2 + 40, RowY + 2, L"Not Rated", 0xA0A0A0, 12);
    ExpectSame();
}

namespace {
struct CutCase {
    const wchar_t* value;
    bool isCut;
};
constexpr CutCase CutCases[] = {
    {L"", false},
    {L"Anna", false},
    {L"Anna\r", false},
    {L"Anna\r\n", false},
    {L"One\rTwo", true},
    {L"\r\r", true},
    {L"Far too wide for its place", true},
    {L"Dots...", false},
};
} // namespace

TEST_F(PaintedRow, AValueIsCutIfItHasTwoLinesOrIsTooWide) {
    NFont font;
    SelectPageFont(font, expected_.Dc());
    for (const CutCase& one : CutCases)
        EXPECT_EQ(IsValueCut(font, one.value, 60), one.isCut) << NString(one.value).ToNarrow();
}
