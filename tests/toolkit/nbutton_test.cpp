#include "tests/support/leak_counters.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/test_cursor.h"
#include "tests/toolkit/button_dialog.h"
#include "tests/toolkit/pixels.h"
#include "toolkit/nbutton.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {
// Of the strips' frames.
constexpr COLORREF Normal = RGB(255, 0, 0);
constexpr COLORREF Down = RGB(0, 255, 0);
constexpr COLORREF Hover = RGB(0, 0, 255);
constexpr COLORREF Focus = RGB(255, 255, 0);
constexpr COLORREF Disabled = RGB(0, 255, 255);
constexpr COLORREF HotDown = RGB(255, 0, 255);
constexpr COLORREF Nothing = RGB(0, 0, 0); // what is let through, without a mask
constexpr COLORREF Untouched = RGB(1, 2, 3);

// Where a virtual operation stands in the table, with the destructor's two
// entries in front.
template <typename Operation>
size_t SlotOf(Operation operation) {
    uintptr_t offsetPlusOne;
    memcpy(&offsetPlusOne, &operation, sizeof(offsetPlusOne));
    return (offsetPlusOne - 1) / sizeof(void*);
}

COLORREF FaceColour() {
    return GetSysColor(COLOR_BTNFACE);
}

// One frame in size.
class FrameSurface : public TestSurface {
public:
    FrameSurface() : TestSurface(StripFrameWidth, StripFrameHeight, Untouched) {}

    // The column of the strip's states alone, the first row.
    COLORREF StateColour() const { return At(3, 0); }
};

// The frame that a button shows, as the states' table and the latch say it.
COLORREF ExpectedColour(int32_t state, bool latched, int32_t flags) {
    const bool hot = state == ButtonHovered || state == ButtonPressed;
    const bool down = (state == ButtonPressed || state == ButtonPressedToo) != latched;
    if (!hot)
        return down ? Down : Normal;
    if (down)
        return flags & ButtonHotDown ? HotDown : Down;
    return flags & ButtonHover ? Hover : Normal;
}

std::string Told(int32_t state, bool latched, int32_t flags) {
    return "state " + std::to_string(state) + (latched ? " latched" : "") + " flags " +
           std::to_string(flags);
}

class NButtonTest : public testing::Test {
protected:
    TestCursor cursor; // far from the dialog
    RecordingButton button;
    ButtonDialog dialog; // gone before its buttons
    FrameSurface surface;
};
} // namespace

TEST_F(NButtonTest, ItsMembersAndOperationsStandInOrder) {
    const void* const members[] = {
        &button.state,       &button.leftDown,  &button.rightDown, &button.keyDown,
        &button.partner,     &button.userValue, &button.flags,     &button.menuId,
        &button.menu,        &button.window,    &button.owner,     &button.module,
        &button.strip,       &button.display,   &button.backdrop,  &button.frameWidth,
        &button.frameHeight, &button.toolTip,   &button.latched};
    const void* last = &button.boundWindow;
    for (const void* member : members) {
        EXPECT_LT(last, member);
        last = member;
    }
    EXPECT_EQ(4u, sizeof(button.state));
    EXPECT_EQ(1u, sizeof(button.leftDown));
    EXPECT_EQ(1u, sizeof(button.rightDown));
    EXPECT_EQ(1u, sizeof(button.keyDown));
    EXPECT_EQ(8u, sizeof(button.userValue));
    EXPECT_EQ(4u, sizeof(button.flags));
    EXPECT_EQ(4u, sizeof(button.menuId));
    EXPECT_EQ(4u, sizeof(button.frameWidth));
    EXPECT_EQ(4u, sizeof(button.frameHeight));
    EXPECT_EQ(1u, sizeof(button.latched));
    EXPECT_EQ(2u, SlotOf(&NButton::OnSubclassMessage));
    EXPECT_EQ(3u, SlotOf(&NButton::OnClick));
    EXPECT_EQ(4u, SlotOf(&NButton::OnRepeat));
}

TEST_F(NButtonTest, StatesAndFlagsHaveTheirNumbers) {
    EXPECT_EQ(0, ButtonIdle);
    EXPECT_EQ(2, ButtonHovered);
    EXPECT_EQ(3, ButtonPressed);
    EXPECT_EQ(1, ButtonDefault);
    EXPECT_EQ(2, ButtonHover);
    EXPECT_EQ(4, ButtonFocus);
    EXPECT_EQ(8, ButtonDisabled);
    EXPECT_EQ(16, ButtonHotDown);
    EXPECT_EQ(128, ButtonMasked);
}

TEST_F(NButtonTest, NoFlagsAreTakenAs135) {
    NButtonSpec spec;
    dialog.bar.Add(button, spec, IDB_STRIPS + 134, 0, nullptr);
    EXPECT_EQ(135, button.flags);
    EXPECT_EQ(StripFrameWidth, button.frameWidth);
    EXPECT_EQ(StripFrameHeight, button.frameHeight);
}

TEST_F(NButtonTest, WhatItIsMadeWithIsKept) {
    HMENU menu = CreateMenu();
    NButtonSpec spec;
    spec.flags = 139;
    spec.menu = menu;
    spec.menuId = IDM_BUTTON;
    dialog.bar.Add(button, spec, IDB_STRIPS + 138, 0x123456789A, GetModuleHandleW(nullptr));
    EXPECT_EQ(139, button.flags);
    EXPECT_EQ(menu, button.menu);
    EXPECT_EQ(IDM_BUTTON, button.menuId);
    EXPECT_EQ(0x123456789A, button.userValue);
    EXPECT_EQ(dialog.window, button.owner);
    EXPECT_EQ(GetModuleHandleW(nullptr), button.module);
    EXPECT_EQ(ButtonIdle, button.state);
    EXPECT_FALSE(button.latched);
    DestroyMenu(menu);
}

TEST_F(NButtonTest, ItsWindowIsAnOwnerDrawnStatic) {
    NButtonSpec spec;
    spec.x = 30;
    spec.y = 40;
    spec.text = L"Next";
    spec.flags = 139;
    dialog.Add(button, spec);
    wchar_t text[20] = {};
    GetClassNameW(button.window, text, 20);
    EXPECT_STREQ(L"Static", text);
    GetWindowTextW(button.window, text, 20);
    EXPECT_STREQ(L"Next", text);
    EXPECT_EQ(0x5000000D, GetWindowLongPtrW(button.window, GWL_STYLE));
    EXPECT_EQ(dialog.window, GetParent(button.window));
    EXPECT_EQ(button.window, button.boundWindow);
    RECT place = {};
    GetWindowRect(button.window, &place);
    MapWindowPoints(nullptr, dialog.window, reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(30, place.left);
    EXPECT_EQ(40, place.top);
    EXPECT_EQ(30 + StripFrameWidth, place.right);
    EXPECT_EQ(40 + StripFrameHeight, place.bottom);
}

TEST_F(NButtonTest, AFocusFrameMakesItATabStop) {
    dialog.Add(button, 0, 0, ButtonFocus | ButtonMasked);
    EXPECT_EQ(0x5001000D, GetWindowLongPtrW(button.window, GWL_STYLE));
}

TEST_F(NButtonTest, ATipTextSetsTheTipOfTheWindow) {
    RecordingButton silent;
    dialog.Add(silent, 0, 0);
    EXPECT_EQ(nullptr, silent.toolTip.target);
    NButtonSpec spec;
    spec.toolTipText = L"View Single / Multiple files";
    dialog.Add(button, spec);
    EXPECT_EQ(button.window, button.toolTip.target);
    EXPECT_EQ(dialog.window, button.toolTip.targetParent);
    EXPECT_EQ(nullptr, button.toolTip.rectOwner);
    EXPECT_EQ(0, button.toolTip.fixedX);
    EXPECT_EQ(0, button.toolTip.fixedY);
    EXPECT_FALSE(button.toolTip.noFade);
    EXPECT_EQ(0u, button.toolTip.delayMs); // those of every tip
    EXPECT_EQ(0u, button.toolTip.durationMs);
    ASSERT_EQ(1, button.toolTip.scene.texts.Count());
    EXPECT_EQ(L"View Single / Multiple files", button.toolTip.scene.texts[0]->text);
    EXPECT_EQ(0, button.toolTip.scene.icons.Count());
    button.Destroy();
    EXPECT_EQ(nullptr, button.toolTip.target);
    dialog.bar.Destroy();
}

// Every set of optional frames, with masks and without: the strip is cut right,
// and each state, latched or not, has its frame.
TEST_F(NButtonTest, EachStateShowsItsFrameForEachSetOfFrames) {
    for (int32_t flags = 0; flags < 32; flags += 2) {
        for (int32_t mask : {0, static_cast<int32_t>(ButtonMasked)}) {
            RecordingButton one;
            dialog.Add(one, 0, 0, flags | mask | ButtonDefault);
            EXPECT_EQ(StripFrameWidth, one.frameWidth) << flags;
            EXPECT_EQ(StripFrameHeight, one.frameHeight) << flags;
            for (int32_t state : {0, 1, 2, 3}) {
                for (bool latched : {false, true}) {
                    one.latched = latched;
                    one.Paint(surface.Dc(), state, false);
                    EXPECT_EQ(ExpectedColour(state, latched, flags), surface.StateColour())
                        << Told(state, latched, flags | mask);
                }
            }
            dialog.bar.Destroy();
        }
    }
}

TEST_F(NButtonTest, WhatAStripHasBeyondItsFramesIsCutOff) {
    NButtonSpec spec;
    spec.flags = ButtonHover | ButtonMasked; // three frames
    button.strip.Resize(14, 7);
    button.Create(spec, 0, dialog.window);
    EXPECT_EQ(4, button.frameWidth);
    EXPECT_EQ(3, button.frameHeight);
    EXPECT_EQ(4, button.display.Width());
    EXPECT_EQ(3, button.backdrop.Height());
    button.Destroy();
    spec.flags = ButtonHover;
    button.strip.Resize(14, 7);
    button.Create(spec, 0, dialog.window);
    EXPECT_EQ(4, button.frameWidth);
    EXPECT_EQ(7, button.frameHeight);
    button.Destroy();
}

TEST_F(NButtonTest, LatchingSwapsTheLooks) {
    dialog.Add(button, 0, 0);
    button.Latch();
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Down, surface.StateColour());
    button.Paint(surface.Dc(), ButtonHovered, true);
    EXPECT_EQ(HotDown, surface.StateColour());
    button.Paint(surface.Dc(), ButtonPressed, true);
    EXPECT_EQ(Hover, surface.StateColour());
    button.Paint(surface.Dc(), ButtonPressedToo, true);
    EXPECT_EQ(Normal, surface.StateColour());
}

TEST_F(NButtonTest, TheMaskLetsTheBackgroundThrough) {
    NCanvas background;
    background.Resize(300, 200);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x)
            SetPixelV(background.dc, x, y, RGB(x % 256, y, 0xC3));
    NButtonSpec spec;
    spec.x = 50;
    spec.y = 60;
    spec.background = &background;
    dialog.Add(button, spec);
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(RGB(50, 60, 0xC3), surface.At(0, 0));
    EXPECT_EQ(RGB(50, 61, 0xC3), surface.At(0, 1));
    // (mask AND background) OR colour
    EXPECT_EQ(RGB((50 & 0x0F) | 0x40, 62 & 0x0F, (0xC3 & 0x0F) | 0xA0), surface.At(0, 2));
    EXPECT_EQ(Normal, surface.At(1, 0));
    EXPECT_EQ(Normal, surface.At(3, 2));
    // The background is one frame in size, and as it was.
    EXPECT_EQ(StripFrameWidth, button.backdrop.Width());
    EXPECT_EQ(StripFrameHeight, button.backdrop.Height());
    EXPECT_EQ(RGB(53, 62, 0xC3), GetPixel(button.backdrop.dc, 3, 2));
}

TEST_F(NButtonTest, WithoutABackgroundTheFaceColourIsBehindIt) {
    dialog.Add(button, 20, 20);
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(FaceColour(), surface.At(0, 0));
    EXPECT_EQ(FaceColour(), GetPixel(button.backdrop.dc, 3, 2));
}

TEST_F(NButtonTest, WhereTheBackgroundEndsTheFaceColourIsBehindIt) {
    NCanvas background;
    background.Resize(2, 300);
    const NCanvas empty;
    NButtonSpec spec;
    for (const NCanvas* picture : {static_cast<const NCanvas*>(&background), &empty}) {
        RecordingButton one;
        spec.background = picture;
        spec.x = 100;
        dialog.Add(one, spec);
        EXPECT_EQ(FaceColour(), GetPixel(one.backdrop.dc, 3, 2));
        dialog.bar.Destroy();
    }
}

TEST_F(NButtonTest, TheDisabledFrameIsLaidOverTheState) {
    dialog.Add(button, 0, 0);
    button.Disable();
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(FaceColour(), surface.At(0, 0));
    EXPECT_EQ(Disabled, surface.At(1, 0));
    EXPECT_EQ(Normal, surface.At(2, 0));
    EXPECT_EQ(Normal, surface.At(3, 0));
    button.Enable();
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Normal, surface.At(1, 0));
}

TEST_F(NButtonTest, TheFocusFrameIsLaidOverTheState) {
    dialog.Add(button, 0, 0);
    SetFocus(button.window);
    ASSERT_EQ(button.window, GetFocus());
    button.Paint(surface.Dc(), ButtonHovered, true);
    EXPECT_EQ(Hover, surface.At(1, 0));
    EXPECT_EQ(Focus, surface.At(2, 0));
    EXPECT_EQ(Hover, surface.At(3, 0));
    // Both overlays at once. The style alone is changed, since EnableWindow may
    // take the focus away.
    const LONG_PTR style = GetWindowLongPtrW(button.window, GWL_STYLE);
    SetWindowLongPtrW(button.window, GWL_STYLE, style | WS_DISABLED);
    ASSERT_EQ(button.window, GetFocus());
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Disabled, surface.At(1, 0));
    EXPECT_EQ(Focus, surface.At(2, 0));
    SetWindowLongPtrW(button.window, GWL_STYLE, style);
    SetFocus(nullptr);
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Normal, surface.At(2, 0));
}

TEST_F(NButtonTest, TheFocusFrameIsLaidOverTheDisabledOne) {
    // Frames of one pixel: normal, down, focus, disabled; the masks are black.
    button.strip.Resize(4, 2);
    const COLORREF frames[] = {Normal, Down, Focus, Disabled};
    for (int x = 0; x < 4; ++x) {
        SetPixelV(button.strip.dc, x, 0, frames[x]);
        SetPixelV(button.strip.dc, x, 1, Nothing);
    }
    NButtonSpec spec;
    spec.flags = ButtonFocus | ButtonDisabled | ButtonMasked;
    button.Create(spec, 0, dialog.window);
    SetFocus(button.window);
    const LONG_PTR style = GetWindowLongPtrW(button.window, GWL_STYLE);
    SetWindowLongPtrW(button.window, GWL_STYLE, style | WS_DISABLED);
    ASSERT_EQ(button.window, GetFocus());
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Focus, surface.At(0, 0));
    SetFocus(nullptr);
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Disabled, surface.At(0, 0));
    button.Destroy();
}

TEST_F(NButtonTest, WithoutTheirFlagsThereAreNoOverlays) {
    dialog.Add(button, 0, 0, ButtonHover | ButtonMasked);
    EnableWindow(button.window, FALSE);
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Normal, surface.At(1, 0));
    EnableWindow(button.window, TRUE);
    SetFocus(button.window);
    ASSERT_EQ(button.window, GetFocus());
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Normal, surface.At(2, 0));
}

TEST_F(NButtonTest, WithoutMasksTheFrameIsCopiedAndNothingIsLaidOver) {
    dialog.Add(button, 0, 0, AllButtonFlags & ~ButtonMasked);
    SetFocus(button.window);
    ASSERT_EQ(button.window, GetFocus());
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Nothing, surface.At(0, 0));
    EXPECT_EQ(RGB(0x40, 0, 0xA0), surface.At(0, 2));
    EXPECT_EQ(Normal, surface.At(2, 0));
    button.Disable();
    button.Paint(surface.Dc(), ButtonIdle, true);
    EXPECT_EQ(Normal, surface.At(1, 0));
}

TEST_F(NButtonTest, WithoutADeviceContextItPaintsTheWindow) {
    dialog.Add(button, 10, 10);
    button.Paint(nullptr, ButtonHovered, false);
    EXPECT_EQ(ButtonHovered, button.state);
    NWindowDC dc(button.window);
    EXPECT_EQ(Hover, GetPixel(dc.dc, 3, 0));
}

TEST_F(NButtonTest, TheSameStateIsPaintedOnlyIfForcedOrWithADeviceContext) {
    dialog.Add(button, 0, 0);
    button.Paint(surface.Dc(), ButtonHovered, false);
    SetPixelV(button.display.dc, 3, 0, Untouched);
    button.Paint(nullptr, ButtonHovered, false);
    EXPECT_EQ(Untouched, GetPixel(button.display.dc, 3, 0));
    button.Paint(nullptr, ButtonHovered, true);
    EXPECT_EQ(Hover, GetPixel(button.display.dc, 3, 0));
    SetPixelV(button.display.dc, 3, 0, Untouched);
    button.Paint(surface.Dc(), ButtonHovered, false);
    EXPECT_EQ(Hover, GetPixel(button.display.dc, 3, 0));
    button.Paint(nullptr, ButtonPressed, false);
    EXPECT_EQ(HotDown, GetPixel(button.display.dc, 3, 0));
}

TEST_F(NButtonTest, WithoutAWindowItPaintsNothingAndKeepsItsState) {
    button.Paint(surface.Dc(), ButtonHovered, true);
    EXPECT_EQ(ButtonIdle, button.state);
    EXPECT_EQ(Untouched, surface.At(0, 0));
    button.Enable();
    button.Disable();
    button.ToggleLatch();
    EXPECT_TRUE(button.latched);
    EXPECT_FALSE(button.ShowMenu(dialog.window));
}

TEST_F(NButtonTest, EnableAndDisableRepaintInTheCurrentState) {
    dialog.Add(button, 0, 0);
    button.Paint(nullptr, ButtonHovered, false);
    button.Disable();
    EXPECT_FALSE(IsWindowEnabled(button.window));
    EXPECT_EQ(ButtonHovered, button.state);
    EXPECT_EQ(Disabled, GetPixel(button.display.dc, 1, 0));
    EXPECT_EQ(Hover, GetPixel(button.display.dc, 3, 0));
    button.Enable();
    EXPECT_TRUE(IsWindowEnabled(button.window));
    EXPECT_EQ(Hover, GetPixel(button.display.dc, 1, 0));
}

TEST_F(NButtonTest, LatchesRepaintAtOnceWhenTheyChange) {
    dialog.Add(button, 0, 0);
    const auto shown = [&] { return GetPixel(button.display.dc, 3, 0); };
    const auto spoil = [&] { SetPixelV(button.display.dc, 3, 0, Untouched); };
    button.Latch();
    EXPECT_TRUE(button.latched);
    EXPECT_EQ(Down, shown());
    spoil();
    button.Latch();
    EXPECT_EQ(Untouched, shown());
    button.Unlatch();
    EXPECT_FALSE(button.latched);
    EXPECT_EQ(Normal, shown());
    spoil();
    button.Unlatch();
    EXPECT_EQ(Untouched, shown());
    button.ToggleLatch();
    EXPECT_TRUE(button.latched);
    EXPECT_EQ(Down, shown());
    button.ToggleLatch();
    EXPECT_FALSE(button.latched);
    EXPECT_EQ(Normal, shown());
}

TEST_F(NButtonTest, DestroyFreesWhatItHasAndMayBeCalledAgain) {
    dialog.Add(button, 0, 0);
    const HWND window = button.window;
    RecordingButton other;
    button.partner = &other;
    other.partner = &button;
    for (int time = 0; time < 2; ++time) {
        button.Destroy();
        EXPECT_EQ(nullptr, button.window);
        EXPECT_EQ(nullptr, button.boundWindow);
        EXPECT_EQ(nullptr, button.partner);
        EXPECT_EQ(nullptr, other.partner);
        EXPECT_EQ(nullptr, button.strip.handle);
        EXPECT_EQ(nullptr, button.display.handle);
        EXPECT_EQ(nullptr, button.backdrop.handle);
        EXPECT_FALSE(IsWindow(window));
    }
}

TEST_F(NButtonTest, DestroyLeavesAPartnerThatHasAnotherOne) {
    RecordingButton other;
    RecordingButton third;
    button.partner = &other;
    other.partner = &third;
    button.Destroy();
    EXPECT_EQ(&third, other.partner);
    other.partner = nullptr;
}

TEST_F(NButtonTest, WithoutAStripItHasNoSizeAndShowsNothing) {
    constexpr int noBitmap = 9999;
    NButtonSpec spec;
    dialog.bar.Add(button, spec, noBitmap, 0, nullptr);
    EXPECT_EQ(0, button.frameWidth);
    EXPECT_EQ(0, button.frameHeight);
    EXPECT_EQ(nullptr, button.display.handle);
    EXPECT_NE(nullptr, button.window);
    button.Paint(surface.Dc(), ButtonHovered, true);
    const RECT ink = surface.Ink(Untouched);
    EXPECT_TRUE(IsRectEmpty(&ink));
    button.Disable();
}

TEST_F(NButtonTest, ManyBarsLeaveNothingBehind) {
    const auto makeOneBar = [] {
        RecordingButton buttons[3];
        ButtonDialog another;
        for (RecordingButton& one : buttons)
            another.Add(one, 10, 10);
        buttons[0].Latch();
        buttons[1].Disable();
        another.Filter(WM_MOUSEMOVE);
    };
    for (int time = 0; time < 3; ++time)
        makeOneBar();
    HandlePosted();
    const PlatformObjects before = CountPlatformObjects();
    for (int time = 0; time < 60; ++time)
        makeOneBar();
    HandlePosted();
    EXPECT_EQ(before, CountPlatformObjects());
}

TEST_F(NButtonTest, BarsWithTipsLeaveNothingBehind) {
    const auto makeOneBar = [] {
        RecordingButton one;
        ButtonDialog another;
        NButtonSpec spec;
        spec.toolTipText = L"First";
        another.Add(one, spec);
    };
    for (int time = 0; time < 3; ++time)
        makeOneBar();
    const int gdi = CountGdiObjects();
    const int user = CountUserObjects();
    const int threads = CountThreads();
    for (int time = 0; time < 10; ++time)
        makeOneBar();
    EXPECT_EQ(gdi, CountGdiObjects());
    EXPECT_EQ(user, CountUserObjects());
    EXPECT_EQ(threads, CountThreads());
}
