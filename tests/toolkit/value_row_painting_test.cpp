#include "tests/support/nstring_printer.h"
#include "tests/support/picture_compare.h"
#include "tests/toolkit/list_dialog.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/scoped_dpi.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/text_oracle.h"
#include "toolkit/value_row_painting.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {
constexpr int Width = 300;
constexpr int Height = RowHeight;
constexpr COLORREF Beyond = 0x00FF00; // no row has it

// The widest of the colours' channels apart.
int Distance(COLORREF a, COLORREF b) {
    const auto apart = [](int x, int y) { return std::abs(x - y); };
    return std::max({apart(GetRValue(a), GetRValue(b)), apart(GetGValue(a), GetGValue(b)),
                     apart(GetBValue(a), GetBValue(b))});
}

class ValueRowPainting : public testing::Test {
protected:
    ValueRowPainting() {
        init.name = L"Name";
        init.nameX = 6;
    }

    int Add() { return dialog.Add(init); }
    NValueRow& Row(int row) { return *dialog.list.rows[row]; }
    const NDrawList::Text& TextOfRow(int row, int index) { return *Row(row).scene.texts[index]; }

    DRAWITEMSTRUCT Item(int row, UINT state, RECT rect = {0, 0, Width, Height}) const {
        DRAWITEMSTRUCT item = {};
        item.CtlType = ODT_LISTBOX;
        item.CtlID = static_cast<UINT>(dialog.list.controlId);
        item.itemID = static_cast<UINT>(row);
        item.itemState = state;
        item.hwndItem = dialog.list.listBox;
        item.hDC = surface.Dc();
        item.rcItem = rect;
        return item;
    }

    // By the dialog's message, on `surface`.
    Filtered Draw(int row, UINT state = 0, RECT rect = {0, 0, Width, Height}) {
        surface.Clear(Beyond);
        DRAWITEMSTRUCT item = Item(row, state, rect);
        return dialog.Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
    }
    Picture DrawPicture(int row, UINT state = 0) {
        Draw(row, state);
        return ReadPicture(surface.Dc(), Width, Height);
    }

    int CaptionWidth(const wchar_t* caption) const { return TextOracle(FontSize).Width(caption); }

    ListDialog dialog;
    NValueRowInit init;
    TestSurface surface{Width, Height, Beyond};
    const COLORREF window = GetSysColor(COLOR_WINDOW);
};

TEST_F(ValueRowPainting, TheStateTellsOfWritingSelectionAndFocus) {
    const int row = Add();
    init.readOnly = true;
    const int readOnly = Add();
    const auto mask = [&](int index, UINT state) {
        return RowStateMask(dialog.list, index, state);
    };
    EXPECT_EQ(mask(row, 0), 1u + 8u + 128u + 256u + 512u);
    EXPECT_EQ(mask(readOnly, 0), 2u + 8u + 128u + 256u + 512u);
    EXPECT_EQ(mask(row, ODS_SELECTED), 1u + 4u + 128u + 256u + 512u);
    EXPECT_EQ(mask(row, ODS_FOCUS), 1u + 8u + 64u + 256u + 512u);
    EXPECT_EQ(mask(row, ODS_SELECTED | ODS_FOCUS), 1u + 4u + 64u + 256u + 512u);
    EXPECT_EQ(mask(row, ODS_DISABLED | ODS_CHECKED), mask(row, 0));
}

TEST_F(ValueRowPainting, NameOrValueDoNotShowWhileTheyAreEditedInThisRow) {
    init.kind = Edit;
    const int edited = Add();
    const int other = Add();
    const auto shown = [&](int row) { return RowStateMask(dialog.list, row, 0) & (256u + 512u); };
    dialog.list.Select(edited);
    EXPECT_EQ(shown(edited), 256u);
    EXPECT_EQ(shown(other), 256u + 512u);
    dialog.list.EditSelectionName(nullptr, false);
    EXPECT_EQ(shown(edited), 512u);
    EXPECT_EQ(shown(other), 256u + 512u);
    dialog.list.Select(-1);
    EXPECT_EQ(shown(edited), 256u + 512u);
}

TEST_F(ValueRowPainting, ASelectedRowWithoutAnEditorShowsBoth) {
    const int row = Add();
    dialog.list.Select(row);
    EXPECT_EQ(RowStateMask(dialog.list, row, 0) & (256u + 512u), 256u + 512u);
}

TEST_F(ValueRowPainting, AMarkTellsWhetherItIsOn) {
    init.kind = Check;
    const int check = Add();
    init.kind = Radio;
    init.value = L"1";
    const int radio = Add();
    const auto mark = [&](int row) {
        Draw(row);
        return Row(row).scene.stateMask & (16u + 32u);
    };
    EXPECT_EQ(mark(check), 16u);
    EXPECT_EQ(mark(radio), 16u);
    Row(check).value = L"1";
    Row(radio).value = L"-1";
    EXPECT_EQ(mark(check), 32u);
    EXPECT_EQ(mark(radio), 32u);
}

TEST_F(ValueRowPainting, ARowWithoutAMarkHasNeitherOfItsBits) {
    init.value = L"1";
    for (int32_t kind : {Plain, Raw, Edit}) {
        init.kind = kind;
        const int row = Add();
        Draw(row);
        EXPECT_EQ(Row(row).scene.stateMask, 1u + 8u + 128u + 256u + 512u);
    }
}

TEST_F(ValueRowPainting, AnItemThatIsNoRowIsWindowColour) {
    Add();
    for (int row : {-1, 1, 1000}) {
        const Filtered filtered = Draw(row, ODS_SELECTED | ODS_FOCUS);
        EXPECT_EQ(filtered, (Filtered{1, 1}));
        EXPECT_EQ(surface.Ink(window).right, 0) << "row " << row;
    }
}

TEST_F(ValueRowPainting, TheRowIsPaintedInItsRectangleAlone) {
    const int row = Add();
    surface.Clear(Beyond);
    DRAWITEMSTRUCT item = Item(row, ODS_SELECTED, {20, 5, 120, 15});
    EXPECT_EQ(dialog.Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), (Filtered{1, 1}));
    const RECT ink = surface.Ink(Beyond);
    EXPECT_EQ(ink.left, 20);
    EXPECT_EQ(ink.top, 5);
    EXPECT_EQ(ink.right, 120);
    EXPECT_EQ(ink.bottom, 15);
    EXPECT_EQ(surface.At(20, 5), window);
    EXPECT_EQ(surface.At(21, 5), COLORREF{0xCC6633});
}

TEST_F(ValueRowPainting, ItPaintsAtTheItemsPlaceWithoutTheBufferToo) {
    const int row = Add();
    surface.Clear(Beyond);
    PaintValueRow(dialog.list, Item(row, ODS_SELECTED, {20, 5, 120, 15}));
    EXPECT_EQ(surface.At(20, 5), window);
    EXPECT_EQ(surface.At(21, 5), COLORREF{0xCC6633});
    EXPECT_EQ(surface.At(119, 5), COLORREF{0xCC6633});
    EXPECT_EQ(surface.At(19, 5), Beyond);
    EXPECT_FALSE(dialog.list.backBuffer.handle);
}

TEST_F(ValueRowPainting, AnotherWindowsItemIsLeft) {
    Add();
    surface.Clear(Beyond);
    DRAWITEMSTRUCT item = Item(0, 0);
    item.hwndItem = dialog.Button();
    EXPECT_EQ(dialog.Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), (Filtered{0, 0}));
    EXPECT_EQ(surface.Ink(Beyond).right, 0);
}

TEST_F(ValueRowPainting, TheBackBufferGrowsAndNeverShrinks) {
    const int row = Add();
    const auto size = [&] {
        const NCanvas& buffer = dialog.list.backBuffer;
        return std::pair(buffer.Width(), buffer.Height());
    };
    Draw(row, 0, {0, 0, 200, 10});
    EXPECT_EQ(size(), std::pair(200, 10));
    const HBITMAP first = dialog.list.backBuffer.handle;
    Draw(row, 0, {0, 0, 100, 5});
    EXPECT_EQ(dialog.list.backBuffer.handle, first);
    Draw(row, 0, {0, 0, 100, 20});
    EXPECT_EQ(size(), std::pair(200, 20));
    Draw(row, 0, {5, 0, 295, 8});
    EXPECT_EQ(size(), std::pair(290, 20));
}

TEST_F(ValueRowPainting, AnItemOfNoSizeIsTaken) {
    const int row = Add();
    EXPECT_EQ(Draw(row, 0, {5, 5, 5, 5}), (Filtered{1, 1}));
    EXPECT_EQ(surface.Ink(Beyond).right, 0);
}

TEST_F(ValueRowPainting, TheSceneIsLaidOutForTheItem) {
    const int row = Add();
    Row(row).scene.marginX = 50;
    Row(row).scene.marginY = 50;
    Draw(row, 0, {3, 2, 203, 22});
    const NDrawList& scene = Row(row).scene;
    EXPECT_EQ(scene.marginX, 0);
    EXPECT_EQ(scene.marginY, 0);
    EXPECT_EQ(scene.minWidth, 200);
    EXPECT_EQ(scene.minHeight, 20);
    EXPECT_EQ(scene.areaWidth, 200);
    EXPECT_EQ(scene.areaHeight, 20);
    Draw(row); // another size follows
    EXPECT_EQ(Row(row).scene.areaWidth, Width);
}

TEST_F(ValueRowPainting, AValueOfSeveralLinesShowsItsFirstOne) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"one\rtwo", L"one..."},   {L"one\r", L"one..."}, {L"\rtwo", L"..."}, {L"\r", L"..."},
        {L"one\ntwo", L"one\ntwo"}, {L"one", L"one"},      {L"", L""}};
    for (const auto& [value, shown] : cases) {
        init.value = value;
        const int row = Add();
        Draw(row);
        EXPECT_EQ(TextOfRow(row, 1).text, shown);
        EXPECT_EQ(Row(row).value, value);
    }
}

TEST_F(ValueRowPainting, TheTextsFollowNameAndValue) {
    const int row = Add();
    Row(row).name = L"Other";
    Row(row).value = L"New";
    Draw(row);
    EXPECT_EQ(TextOfRow(row, 0).text, L"Other");
    EXPECT_EQ(TextOfRow(row, 1).text, L"New");
}

TEST_F(ValueRowPainting, ARawRowStaysAsItWasAdded) {
    init.kind = Raw;
    init.value = L"one\rtwo";
    const int row = Add();
    Row(row).name = L"Other";
    Row(row).value = L"New";
    Draw(row);
    EXPECT_EQ(TextOfRow(row, 0).text, L"Name");
    EXPECT_EQ(TextOfRow(row, 1).text, L"one\rtwo");
    EXPECT_EQ(TextOfRow(row, 1).maxWidth, 0);
}

TEST_F(ValueRowPainting, ASceneWithFewerTextsIsPaintedAsItIs) {
    init.value = L"v";
    const int row = Add();
    Row(row).scene.texts.RemoveAt(1);
    Row(row).name = L"Other";
    Draw(row, ODS_SELECTED);
    EXPECT_EQ(TextOfRow(row, 0).text, L"Name");
    EXPECT_EQ(surface.At(1, 0), COLORREF{0xCC6633});
    Row(row).scene.texts.Clear();
    EXPECT_EQ(Draw(row), (Filtered{1, 1}));
}

TEST_F(ValueRowPainting, ARowWithAMarkShowsItsNameAndNoValue) {
    for (int32_t kind : {Check, Radio}) {
        init.kind = kind;
        init.value = L"1";
        const int row = Add();
        Draw(row);
        EXPECT_EQ(TextOfRow(row, 0).text, L"Name");
        EXPECT_TRUE(TextOfRow(row, 1).text.IsEmpty());
        EXPECT_EQ(TextOfRow(row, 1).maxWidth, Width - ValueX);
    }
}

TEST_F(ValueRowPainting, AValueHasRoomUpToTheRightEdgeOrTheButton) {
    init.value = L"v";
    const int plain = Add();
    init.valueWidth = 100;
    const int narrow = Add();
    init.buttonText = L"View";
    const int narrowWithButton = Add();
    init.valueWidth = 0;
    const int withButton = Add();
    const int caption = CaptionWidth(L"[ View ]");
    const auto room = [&](int row, UINT state) {
        Draw(row, state);
        return TextOfRow(row, 1).maxWidth;
    };
    EXPECT_EQ(room(plain, 0), Width - ValueX);
    EXPECT_EQ(room(narrow, 0), Width - ValueX); // wanted: the width counts with a button alone
    EXPECT_EQ(room(withButton, 0), Width - ValueX - caption - 7);
    EXPECT_EQ(room(narrowWithButton, 0), 100 - caption - 7);
    EXPECT_EQ(room(withButton, ODS_SELECTED), Width - ValueX);
    EXPECT_EQ(room(narrowWithButton, ODS_SELECTED), Width - ValueX);
}

TEST_F(ValueRowPainting, ACaptionIsMeasuredInTheScaledSizeOnAFinerScreen) {
    const ScopedDpi dpi(144);
    dialog.CreateList(false);
    init.value = L"v";
    init.buttonText = L"View";
    const int row = Add();
    Draw(row);
    const int caption = TextOracle(19).Width(L"[ View ]");
    ASSERT_NE(caption, CaptionWidth(L"[ View ]"));
    EXPECT_EQ(TextOfRow(row, 1).maxWidth, Width - 180 - caption - 7);
}

TEST_F(ValueRowPainting, AValueThatDoesNotFitEndsBeforeTheCaption) {
    init.buttonText = L"View";
    init.value = L"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW";
    const int row = Add();
    Draw(row);
    const int caption = Width - 4 - CaptionWidth(L"[ View ]");
    for (int x = caption - 4; x < caption; ++x)
        for (int y = 0; y < Height; ++y)
            ASSERT_EQ(surface.At(x, y), window) << x << ", " << y;
}

TEST_F(ValueRowPainting, ASelectedRowHasItsBand) {
    init.name = L"";
    const int row = Add();
    Draw(row, ODS_SELECTED);
    EXPECT_EQ(surface.At(0, 10), window);
    for (const POINT& edge : {POINT{1, 0},
                              {1, Height - 1},
                              {Width - 1, 0},
                              {150, 0},
                              {150, Height - 1},
                              {Width - 1, 10}})
        EXPECT_EQ(surface.At(edge.x, edge.y), COLORREF{0xCC6633}) << edge.x << ", " << edge.y;
    EXPECT_EQ(surface.At(2, 1), COLORREF{0xF9ECE5});
    EXPECT_EQ(surface.At(Width - 2, Height - 2), COLORREF{0xF9ECE5});
    Draw(row);
    EXPECT_EQ(surface.Ink(window).right, 0);
}

TEST_F(ValueRowPainting, TheFocusIsADottedFrame) {
    init.name = L"";
    const int row = Add();
    Draw(row, ODS_FOCUS);
    const RECT ink = surface.Ink(window);
    EXPECT_LE(ink.left - 3, 1); // every other pixel
    EXPECT_EQ(ink.top, 2);
    EXPECT_LE(Width - 2 - ink.right, 1);
    EXPECT_EQ(ink.bottom, Height - 2);
}

TEST_F(ValueRowPainting, AReadOnlyRowIsGreyInAllItsTexts) {
    init.value = L"value";
    init.valueColour = 0x0000FF;
    init.nameColour = 0xFF0000;
    init.buttonText = L"View";
    const auto darkest = [&](int row) {
        Draw(row);
        int least = 255;
        for (int x = 0; x < Width; ++x)
            for (int y = 0; y < Height; ++y)
                for (int channel : {GetRValue(surface.At(x, y)), GetGValue(surface.At(x, y)),
                                    GetBValue(surface.At(x, y))})
                    least = std::min(least, channel);
        return least;
    };
    const int writable = Add();
    init.readOnly = true;
    const int readOnly = Add();
    EXPECT_LT(darkest(writable), 0x80);
    EXPECT_GE(darkest(readOnly), 0xC0);
    EXPECT_LT(darkest(readOnly), 0xE0);
    // The texts have their own colours back.
    EXPECT_EQ(TextOfRow(readOnly, 0).colour, COLORREF{0xFF0000});
    EXPECT_EQ(TextOfRow(readOnly, 1).colour, COLORREF{0x0000FF});
    EXPECT_EQ(TextOfRow(readOnly, 2).colour, COLORREF{0x000080});
    EXPECT_EQ(TextOfRow(readOnly, 3).colour, COLORREF{0xC0C0C0});
}

TEST_F(ValueRowPainting, AButtonsCaptionShowsUntilTheRowIsSelected) {
    init.name = L"";
    const int bare = Add();
    init.buttonText = L"View";
    const int row = Add();
    Draw(row);
    const RECT ink = surface.Ink(window);
    EXPECT_GE(ink.left, Width - 4 - CaptionWidth(L"[ View ]"));
    EXPECT_GT(ink.right, Width - 12);
    EXPECT_LE(ink.right, Width - 4);
    EXPECT_EQ(DrawPicture(row, ODS_SELECTED).pixels, DrawPicture(bare, ODS_SELECTED).pixels);
}

TEST_F(ValueRowPainting, AReadOnlyRowShowsItsCaptionAlsoWhenSelected) {
    init.name = L"";
    init.readOnly = true;
    const int bare = Add();
    init.buttonText = L"View";
    const int row = Add();
    EXPECT_NE(DrawPicture(row, ODS_SELECTED).pixels, DrawPicture(bare, ODS_SELECTED).pixels);
    EXPECT_NE(DrawPicture(row).pixels, DrawPicture(bare).pixels);
}

TEST_F(ValueRowPainting, EachMarkShowsInItsState) {
    dialog.list.LoadMarks(IDI_MARKS, 16);
    init.name = L"";
    init.markX = 40;
    int number = 0; // of the icon, in the order of the members
    for (int32_t kind : {Check, Radio})
        for (bool readOnly : {false, true})
            for (bool on : {true, false}) {
                init.kind = kind;
                init.readOnly = readOnly;
                init.value = !on ? L"0" : kind == Check ? L"1" : L"-1";
                const int row = Add();
                Draw(row);
                const COLORREF expected = RGB(30 * number, 255 - 30 * number, 128);
                EXPECT_EQ(surface.At(40, 2), expected) << number;
                EXPECT_EQ(surface.At(55, 17), expected) << number;
                EXPECT_EQ(surface.At(39, 10), window);
                EXPECT_EQ(surface.At(56, 10), window);
                ++number;
            }
}

TEST_F(ValueRowPainting, TheIconStandsInTheMiddle) {
    init.name = L"";
    init.icon.Load(IDI_MARK, 16, 16);
    init.iconX = 50;
    const int row = Add();
    Draw(row);
    const RECT ink = surface.Ink(window);
    EXPECT_EQ(ink.left, 50);
    EXPECT_EQ(ink.right, 66);
    EXPECT_EQ(ink.top, 2); // 10 less 8
    EXPECT_EQ(ink.bottom, 18);
    EXPECT_EQ(surface.At(50, 2), COLORREF{0x0000FF});
}

TEST_F(ValueRowPainting, ATitlesGroundRunsFromTheWindowColourToTheRight) {
    init.kind = Title;
    init.name = L"";
    const int row = Add();
    Draw(row);
    EXPECT_LE(Distance(surface.At(0, 0), window), 2);
    EXPECT_LE(Distance(surface.At(0, Height - 1), window), 2);
    EXPECT_LE(Distance(surface.At(Width - 1, 0), 0xFFC8C8), 2);
    EXPECT_LE(Distance(surface.At(Width - 1, Height - 1), 0xEFF8F8), 4);
}

TEST_F(ValueRowPainting, AHeadingsRuleIsOnePixelHighAndFadesToTheRight) {
    init.kind = Heading;
    init.name = L"";
    const int row = Add();
    Draw(row);
    const int left = 6 + 4;
    const RECT ink = surface.Ink(window);
    EXPECT_EQ(ink.left, left);
    EXPECT_EQ(ink.top, Height / 2);
    EXPECT_EQ(ink.bottom, Height / 2 + 1);
    EXPECT_LE(Width - 4 - ink.right, 4); // the last shades are all but the window's
    EXPECT_LE(ink.right, Width - 4);
    EXPECT_LE(Distance(surface.At(left, Height / 2), 0x808080), 2);
}

TEST_F(ValueRowPainting, ALinksValueIsBlue) {
    init.kind = Link;
    init.name = L"";
    init.value = L"llllllllllll";
    const int row = Add();
    Draw(row);
    const RECT ink = surface.Ink(window);
    bool hasBlue = false;
    for (int x = ink.left; x < ink.right; ++x)
        for (int y = ink.top; y < ink.bottom; ++y) {
            hasBlue |= surface.At(x, y) == COLORREF{0xFF0000};
            EXPECT_EQ(GetBValue(surface.At(x, y)), 255) << x << ", " << y;
        }
    EXPECT_TRUE(hasBlue);
}

TEST_F(ValueRowPainting, TheWindowShowsItsRows) {
    init.name = L"";
    Add();
    Add();
    dialog.list.Select(1);
    HandlePosted();
    RedrawWindow(dialog.list.listBox, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const NWindowDC dc(dialog.list.listBox);
    const RECT item = dialog.ItemRect(1);
    EXPECT_EQ(item.bottom - item.top, RowHeight);
    EXPECT_EQ(GetPixel(dc.dc, 1, item.top), COLORREF{0xCC6633});
    EXPECT_EQ(GetPixel(dc.dc, 2, item.top + 1), COLORREF{0xF9ECE5});
    EXPECT_EQ(GetPixel(dc.dc, 2, 1), window);
}
} // namespace
