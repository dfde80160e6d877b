#include "audiopage/rows_clipboard.h"
#include "foundation/module_instance.h"
#include "foundation/unique_handle.h"
#include "resources/resource_ids.h"
#include "tests/audiopage/page_fixture.h"
#include "tests/support/clipboard_turn.h"
#include "toolkit/message_pump.h"

namespace {
struct ButtonCase {
    int x;
    const wchar_t* text;
    const wchar_t* tip; // null for none
    int bitmap;
    int width;
    int menu;
};
// In the order in which they are added.
constexpr ButtonCase ButtonCases[] = {
    {7, L"First", nullptr, 215, 17, 0},
    {19, L"Previous", nullptr, 216, 17, 0},
    {31, L"View Single", L"View Single / Multiple files", 217, 60, 0},
    {72, L"Next", nullptr, 219, 17, 0},
    {84, L"Last", nullptr, 218, 17, 0},
    {218, L"Options Menu", L"Options Menu", 220, 17, 222},
};
constexpr int Buttons = 6;

class PageButtons : public PageTest {
protected:
    NButton& Button(int index) { return *static_cast<NButton*>(Page().Buttons.buttons.At(index)); }
};

NString TitleOf(HWND window) {
    wchar_t title[100] = {};
    GetWindowTextW(window, title, 100);
    return title;
}

struct MenuTraits {
    using Handle = HMENU;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyMenu(handle); }
};
} // namespace

TEST_F(PageButtons, StandInALineEachDisabledAtFirst) {
    AddFiles(2);
    window_.Open();
    ASSERT_EQ(Page().Buttons.buttons.Count, Buttons);
    for (int index = 0; index < Buttons; ++index) {
        const ButtonCase& expected = ButtonCases[index];
        const NButton& button = Button(index);
        SCOPED_TRACE(index);
        const RECT place = window_.PlaceOf(button.window);
        EXPECT_EQ(place.left, window_.X(expected.x));
        EXPECT_EQ(place.top, window_.Y(238));
        EXPECT_EQ(place.right - place.left, expected.width);
        EXPECT_EQ(place.bottom - place.top, 17);
        EXPECT_EQ(TitleOf(button.window), expected.text);
        EXPECT_EQ(button.flags, 139);
        EXPECT_EQ(button.menuId, expected.menu);
        EXPECT_EQ(button.userValue, 0);
        EXPECT_FALSE(window_.IsEnabled(button));
    }
}

TEST_F(PageButtons, AreTheOnesOfThePageAndKnowIt) {
    AddFiles(2);
    window_.Open();
    const clAudioPropPage::PageButton* buttons[] = {&Page().cmdSkipFirst,  &Page().cmdSkipPrev,
                                                    &Page().cmdViewSingle, &Page().cmdSkipNext,
                                                    &Page().cmdSkipLast,   &Page().cmdOptMenu};
    for (int index = 0; index < Buttons; ++index) {
        EXPECT_EQ(&Button(index), buttons[index]);
        EXPECT_EQ(buttons[index]->Page, &Page());
    }
}

TEST_F(PageButtons, TwoOfThemHaveTips) {
    AddFiles(2);
    window_.Open();
    for (int index = 0; index < Buttons; ++index) {
        SCOPED_TRACE(index);
        NToolTip& tip = Button(index).toolTip;
        if (!ButtonCases[index].tip) {
            EXPECT_EQ(tip.scene.texts.Count(), 0);
            continue;
        }
        EXPECT_EQ(tip.target, Button(index).window);
        ASSERT_EQ(tip.scene.texts.Count(), 1);
        EXPECT_EQ(tip.scene.texts[0]->text, ButtonCases[index].tip);
    }
}

TEST_F(PageButtons, ShowTheirOwnStrips) {
    AddFiles(2);
    window_.Open();
    for (int index = 0; index < Buttons; ++index) {
        NCanvas expected;
        ASSERT_TRUE(expected.LoadResource(ButtonCases[index].bitmap, NModuleInstance()));
        const NCanvas& strip = Button(index).strip;
        const Picture actual = ReadPicture(strip.dc, strip.Width(), strip.Height());
        EXPECT_EQ(actual.width, 4 * ButtonCases[index].width);
        EXPECT_EQ(actual.height, 34);
        EXPECT_EQ(actual.pixels,
                  ReadPicture(expected.dc, expected.Width(), expected.Height()).pixels)
            << index;
    }
}

TEST_F(PageButtons, HaveThePagesGroundBehindThem) {
    AddFiles(2);
    window_.Open();
    const COLORREF paper = GetSysColor(COLOR_WINDOW);
    for (int index = 0; index < Buttons; ++index) {
        const NCanvas& backdrop = Button(index).backdrop;
        EXPECT_EQ(GetPixel(backdrop.dc, 0, 0), paper);
        EXPECT_EQ(GetPixel(backdrop.dc, backdrop.Width() - 1, backdrop.Height() - 1), paper);
    }
}

TEST_F(PageButtons, AnswerTheRightMouseButtonToo) {
    AddFiles(2);
    window_.OpenAndRead();
    Page().cmdViewSingle.OnClick(true);
    EXPECT_TRUE(Page().cmdViewSingle.latched);
}

TEST_F(PageButtons, OneThatIsDisabledDoesNotClick) {
    AddFiles(2);
    window_.OpenAndRead();
    const RECT place = window_.PlaceOf(Page().cmdSkipNext.window);
    TestCursor::MoveTo(window_.Dialog(), place.left + 3, place.top + 3);
    window_.Send(WM_LBUTTONDOWN);
    window_.Send(WM_LBUTTONUP);
    EXPECT_EQ(Page().FileIndex, 0);
    EXPECT_EQ(Page().PageRowsOne.Count(), 0);
}

TEST_F(PageButtons, AKeyClicksOneToo) {
    AddFiles(2);
    window_.OpenAndRead();
    SendMessageW(Page().cmdViewSingle.window, WM_KEYDOWN, VK_SPACE, 0);
    SendMessageW(Page().cmdViewSingle.window, WM_KEYUP, VK_SPACE, 0);
    EXPECT_TRUE(Page().cmdViewSingle.latched);
    EXPECT_EQ(Page().PageRowsOne.Count(), 23);
}

TEST_F(PageButtons, TheMenuHasOneCommand) {
    const UniqueHandle<MenuTraits> menu(LoadMenuW(NModuleInstance(), MAKEINTRESOURCEW(222)));
    ASSERT_EQ(GetMenuItemCount(menu.Get()), 1);
    const HMENU entries = GetSubMenu(menu.Get(), 0);
    ASSERT_EQ(GetMenuItemCount(entries), 1);
    wchar_t text[50] = {};
    GetMenuStringW(entries, 0, text, 50, MF_BYPOSITION);
    EXPECT_STREQ(text, L"Copy to Clipboard");
    EXPECT_EQ(GetMenuItemID(entries, 0), 32768u);
}

TEST_F(PageButtons, TheMenuOfThePressedButtonCopiesTheRows) {
    const ClipboardTurn turn;
    AddFiles(2);
    window_.OpenAndRead();
    const RECT place = window_.PlaceOf(Page().cmdOptMenu.window);
    TestCursor::MoveTo(window_.Dialog(), place.left + 3, place.top + 3);
    // The open menu takes the keys of its owner.
    PostMessageW(window_.Dialog(), WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(window_.Dialog(), WM_KEYDOWN, VK_RETURN, 0);
    window_.Send(WM_LBUTTONDOWN);
    bool quit = false;
    EXPECT_TRUE(PumpPending(&quit, nullptr));
    EXPECT_EQ(ClipboardTurn::WideText(), RowsAsText(Page().PageRowsAll).c_str());
    EXPECT_FALSE(Page().cmdOptMenu.keyDown);
}

TEST_F(PageButtons, TheDialogHasNoControlsOfItsOwn) {
    const HWND sheet = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 500, 500, nullptr,
                                       nullptr, nullptr, nullptr);
    const HWND dialog = CreateDialogParamW(
        NModuleInstance(), MAKEINTRESOURCEW(206), sheet,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_CHILD), nullptr);
    RECT size = {0, 0, 234, 250};
    MapDialogRect(dialog, &size);
    RECT client = {};
    GetClientRect(dialog, &client);
    EXPECT_EQ(client.right, size.right);
    EXPECT_EQ(client.bottom, size.bottom);
    DestroyWindow(sheet);
}
