#include "tests/support/test_cursor.h"
#include "tests/toolkit/button_dialog.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/window_facts.h"
#include "toolkit/nbuttonbar.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

namespace {
constexpr COLORREF Normal = RGB(255, 0, 0); // of the strips' frames
constexpr COLORREF Hovered = RGB(0, 0, 255);
constexpr COLORREF Disabled = RGB(0, 255, 255);
constexpr COLORREF Untouched = RGB(1, 2, 3);

constexpr Filtered NotTaken = {0, 0};
constexpr Filtered Taken = {0, 1};

// Of the last SetTimer of this program.
struct {
    HWND window;
    UINT_PTR id;
    UINT periodMs;
    TIMERPROC proc;
} lastTimer;

class NButtonBarTest : public testing::Test {
protected:
    NButtonBarTest() {
        dialog.Add(first, 20, 20);
        dialog.Add(second, 60, 20);
    }

    void Hover(const NButton& button) { Point(button.window, 1, 1); }
    void Leave() { Point(dialog.window, 150, 100); }
    void Point(HWND window, int x, int y) { TestCursor::MoveTo(window, x, y); }
    void Press(const NButton& button) {
        Hover(button);
        dialog.Filter(WM_LBUTTONDOWN);
    }

    TestCursor cursor;
    RecordingButton first;
    RecordingButton second;
    ButtonDialog dialog;
};
} // namespace

extern "C" {
extern decltype(&::SetTimer) __real___imp_SetTimer;
extern decltype(&::SetTimer) __wrap___imp_SetTimer;
decltype(&::SetTimer) __wrap___imp_SetTimer = [](HWND window, UINT_PTR id, UINT periodMs,
                                                 TIMERPROC proc) -> UINT_PTR {
    lastTimer = {window, id, periodMs, proc};
    return __real___imp_SetTimer(window, id, periodMs, proc);
};
}

TEST_F(NButtonBarTest, ItsMembersStandInOrder) {
    const void* const members[] = {&dialog.bar.tick, &dialog.bar.buttons, &dialog.bar.lock,
                                   &dialog.bar.owner};
    const void* last = &dialog.bar.timerId;
    for (const void* member : members) {
        EXPECT_LT(last, member);
        last = member;
    }
    EXPECT_EQ(4u, sizeof(dialog.bar.tick));
}

TEST_F(NButtonBarTest, StartSetsATimerOfFiftyMillisecondsOnTheOwner) {
    ButtonDialog other;
    EXPECT_EQ(other.window, other.bar.owner);
    EXPECT_EQ(7787u, other.bar.timerId);
    EXPECT_EQ(other.window, lastTimer.window);
    EXPECT_EQ(7787u, lastTimer.id);
    EXPECT_EQ(50u, lastTimer.periodMs);
    EXPECT_EQ(nullptr, lastTimer.proc);
    EXPECT_TRUE(KillTimer(other.window, 7787));
}

TEST_F(NButtonBarTest, AddAppends) {
    ASSERT_EQ(2, dialog.bar.buttons.Count);
    EXPECT_EQ(&first, dialog.bar.buttons.At(0));
    EXPECT_EQ(&second, dialog.bar.buttons.At(1));
}

TEST_F(NButtonBarTest, DestroyEndsTheTimerThePartnershipsAndTheButtons) {
    RecordingButton outside; // a partner that the bar doesn't have
    first.partner = &outside;
    outside.partner = &first;
    const HWND window = second.window;
    for (int time = 0; time < 2; ++time) {
        dialog.bar.Destroy();
        EXPECT_EQ(0u, dialog.bar.timerId);
        EXPECT_FALSE(KillTimer(dialog.window, 7787));
        EXPECT_EQ(0, dialog.bar.buttons.Count);
        EXPECT_EQ(nullptr, first.partner);
        EXPECT_EQ(nullptr, outside.partner);
        EXPECT_EQ(nullptr, first.window);
        EXPECT_EQ(nullptr, second.window);
        EXPECT_FALSE(IsWindow(window));
    }
    EXPECT_EQ(NotTaken, dialog.Filter(WM_TIMER, 7787));
    EXPECT_EQ(NotTaken, dialog.Filter(WM_TIMER, 0));
}

TEST_F(NButtonBarTest, AfterDestroyAButtonCanBeAddedAgain) {
    Press(first);
    dialog.bar.Destroy();
    dialog.bar.Start(dialog.window);
    dialog.Add(first, 20, 20);
    EXPECT_EQ(1, dialog.bar.buttons.Count);
    EXPECT_EQ(ButtonIdle, first.state);
    EXPECT_FALSE(first.leftDown);
    EXPECT_TRUE(IsWindow(first.window));
}

// What each message of the filter comes to, by its result and `handled`.
TEST_F(NButtonBarTest, EachMessageIsConsumedOrNot) {
    const struct {
        UINT message;
        Filtered overAButton;
        Filtered elsewhere;
    } rows[] = {{WM_LBUTTONDOWN, Taken, NotTaken},  {WM_LBUTTONDBLCLK, Taken, NotTaken},
                {WM_RBUTTONDOWN, Taken, NotTaken},  {WM_RBUTTONDBLCLK, Taken, NotTaken},
                {WM_LBUTTONUP, NotTaken, NotTaken}, {WM_RBUTTONUP, NotTaken, NotTaken},
                {WM_MOUSEMOVE, NotTaken, NotTaken}, {WM_MBUTTONDOWN, NotTaken, NotTaken},
                {WM_COMMAND, NotTaken, NotTaken},   {WM_PAINT, NotTaken, NotTaken}};
    for (const auto& row : rows) {
        Hover(first);
        EXPECT_EQ(row.overAButton, dialog.Filter(row.message)) << row.message;
        Leave();
        EXPECT_EQ(row.elsewhere, dialog.Filter(row.message)) << row.message;
    }
    EXPECT_EQ(Taken, dialog.Filter(WM_TIMER, 7787));
    EXPECT_EQ(NotTaken, dialog.Filter(WM_TIMER, 1));
}

TEST_F(NButtonBarTest, ADoubleClickPressesAsAClickDoes) {
    for (UINT message : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
        Hover(first);
        dialog.Filter(message);
        EXPECT_TRUE(first.leftDown);
        EXPECT_FALSE(first.rightDown);
        EXPECT_EQ(ButtonPressed, first.state);
        dialog.Filter(WM_LBUTTONUP);
    }
    for (UINT message : {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK}) {
        dialog.Filter(message);
        EXPECT_FALSE(first.leftDown);
        EXPECT_TRUE(first.rightDown);
        EXPECT_EQ(ButtonPressed, first.state);
        dialog.Filter(WM_RBUTTONUP);
    }
    EXPECT_EQ((std::vector<bool>{false, false, true, true}), first.clicks);
}

TEST_F(NButtonBarTest, APressTakesFocusAndMouse) {
    SetFocus(dialog.window);
    Press(first);
    EXPECT_EQ(first.window, GetFocus());
    EXPECT_EQ(dialog.window, GetCapture());
    EXPECT_TRUE(first.clicks.empty());
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(std::vector<bool>{false}, first.clicks);
    EXPECT_FALSE(first.leftDown);
    EXPECT_EQ(ButtonHovered, first.state);
    EXPECT_TRUE(second.clicks.empty());
}

TEST_F(NButtonBarTest, ARightReleaseLeavesTheLeftButtonsPress) {
    Press(first);
    dialog.Filter(WM_RBUTTONUP);
    EXPECT_TRUE(first.leftDown);
    EXPECT_TRUE(first.clicks.empty());
    EXPECT_EQ(nullptr, GetCapture());
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(std::vector<bool>{false}, first.clicks);
}

TEST_F(NButtonBarTest, LeftWhilePressedItShowsIdleAndAReleaseThereIsNoClick) {
    Press(first);
    Leave();
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, first.state);
    EXPECT_TRUE(first.leftDown);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_FALSE(first.leftDown);
    EXPECT_TRUE(first.clicks.empty());
}

TEST_F(NButtonBarTest, LeftAndComeBackToWhilePressedItClicks) {
    Press(first);
    Leave();
    dialog.Filter(WM_MOUSEMOVE);
    Hover(first);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonPressed, first.state);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(1u, first.clicks.size());
}

TEST_F(NButtonBarTest, AReleaseOverAnotherButtonClicksNeither) {
    Press(first);
    Hover(second);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonHovered, second.state);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_TRUE(first.clicks.empty());
    EXPECT_TRUE(second.clicks.empty());
}

TEST_F(NButtonBarTest, TheReleaseGoesByTheStateLastShown) {
    // Nothing has told the bar yet that the cursor is gone.
    Press(first);
    Leave();
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(1u, first.clicks.size());
    EXPECT_EQ(ButtonIdle, first.state);
}

TEST_F(NButtonBarTest, TheStateThatNothingSetsCountsAsPressed) {
    Press(first);
    first.state = ButtonPressedToo;
    dialog.Tick();
    EXPECT_EQ(1u, first.repeats.size());
    first.state = ButtonPressedToo;
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(1u, first.clicks.size());
}

TEST_F(NButtonBarTest, ADisabledButtonTakesThePressAndDoesNotClick) {
    first.Disable();
    Hover(first);
    EXPECT_EQ(Taken, dialog.Filter(WM_LBUTTONDOWN));
    EXPECT_EQ(ButtonIdle, first.state);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_TRUE(first.clicks.empty());
}

TEST_F(NButtonBarTest, DisabledAfterThePressItDoesNotClick) {
    Press(first);
    first.Disable();
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, first.state);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_TRUE(first.clicks.empty());
}

TEST_F(NButtonBarTest, AMouseMoveUpdatesTheHoverAtOnce) {
    Hover(first);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonHovered, first.state);
    EXPECT_EQ(ButtonIdle, second.state);
    Hover(second);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, first.state);
    EXPECT_EQ(ButtonHovered, second.state);
}

TEST_F(NButtonBarTest, TheTimerUpdatesTheHoverAtEverySecondTick) {
    Hover(first);
    dialog.Tick();
    EXPECT_EQ(1u, dialog.bar.tick);
    EXPECT_EQ(ButtonIdle, first.state);
    dialog.Tick();
    EXPECT_EQ(ButtonHovered, first.state);
    Leave();
    dialog.Tick();
    EXPECT_EQ(ButtonHovered, first.state);
    dialog.Tick();
    EXPECT_EQ(ButtonIdle, first.state);
    EXPECT_EQ(4u, dialog.bar.tick);
}

TEST_F(NButtonBarTest, ATickThatChangesNothingPaintsNothing) {
    Hover(first);
    dialog.Filter(WM_MOUSEMOVE);
    for (RecordingButton* button : {&first, &second})
        SetPixelV(button->display.dc, 3, 0, Untouched);
    dialog.Tick();
    dialog.Tick();
    for (RecordingButton* button : {&first, &second})
        EXPECT_EQ(Untouched, GetPixel(button->display.dc, 3, 0));
}

TEST_F(NButtonBarTest, TheEdgesOfAButtonAreItsOwn) {
    const struct {
        int x, y;
        bool over;
    } rows[] = {{0, 0, true},
                {StripFrameWidth - 1, StripFrameHeight - 1, true},
                {-1, 0, false},
                {0, -1, false},
                {StripFrameWidth, 0, false},
                {0, StripFrameHeight, false}};
    for (const auto& row : rows) {
        Point(first.window, row.x, row.y);
        dialog.Filter(WM_MOUSEMOVE);
        EXPECT_EQ(row.over ? ButtonHovered : ButtonIdle, first.state) << row.x << " " << row.y;
    }
}

TEST_F(NButtonBarTest, AHiddenButtonIsNotHovered) {
    Hover(first);
    ShowWindow(first.window, SW_HIDE);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, first.state);
}

TEST_F(NButtonBarTest, AButtonOfAHiddenDialogIsNotHovered) {
    Hover(first);
    ShowWindow(dialog.window, SW_HIDE);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, first.state);
}

TEST_F(NButtonBarTest, AnotherControlOverTheButtonHidesItFromTheCursor) {
    HWND cover = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 50, 50,
                                 dialog.window, nullptr, nullptr, nullptr);
    SetWindowPos(cover, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    Hover(first);
    EXPECT_EQ(NotTaken, dialog.Filter(WM_LBUTTONDOWN));
    EXPECT_EQ(ButtonIdle, first.state);
    ShowWindow(cover, SW_HIDE);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonHovered, first.state);
}

TEST_F(NButtonBarTest, OutsideTheDialogAButtonWithoutAWindowIsNotHovered) {
    second.Destroy();
    TestCursor::MoveTo(dialog.window, -50, -50);
    EXPECT_EQ(NotTaken, dialog.Filter(WM_LBUTTONDOWN));
    EXPECT_FALSE(second.leftDown);
    TestCursor::Hide();
    EXPECT_EQ(NotTaken, dialog.Filter(WM_LBUTTONDOWN));
}

TEST_F(NButtonBarTest, PartnersShareTheHover) {
    first.partner = &second;
    second.partner = &first;
    Hover(second);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonHovered, first.state);
    EXPECT_EQ(ButtonHovered, second.state);
    Hover(first);
    dialog.Filter(WM_LBUTTONDOWN);
    EXPECT_EQ(ButtonPressed, first.state);
    EXPECT_EQ(ButtonHovered, second.state);
    dialog.Filter(WM_LBUTTONUP);
    Leave();
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, first.state);
    EXPECT_EQ(ButtonIdle, second.state);
}

TEST_F(NButtonBarTest, APressLeftByItsPartnerIsHeldAndClicksThere) {
    first.partner = &second;
    second.partner = &first;
    Press(first);
    Hover(second);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonPressed, first.state);
    EXPECT_EQ(ButtonHovered, second.state);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(std::vector<bool>{false}, first.clicks);
    EXPECT_TRUE(second.clicks.empty());
    EXPECT_EQ(ButtonHovered, first.state);
}

TEST_F(NButtonBarTest, APartnershipOfOneSideSharesToThatSideAlone) {
    first.partner = &second;
    Hover(second);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonHovered, first.state);
    Hover(first);
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, second.state);
}

TEST_F(NButtonBarTest, WhileAKeyIsDownTheButtonIsPressedWhereverTheCursorIs) {
    Leave();
    first.keyDown = true;
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonPressed, first.state);
    first.Disable();
    dialog.Filter(WM_MOUSEMOVE);
    EXPECT_EQ(ButtonIdle, first.state);
}

// Told by which of the flags is set while it shows as pressed.
TEST_F(NButtonBarTest, RepeatTellsTheRightMouseButtonFromTheLeftAndAKey) {
    const struct {
        bool left, right, key;
        bool isRight;
    } rows[] = {{true, false, false, false}, {false, true, false, true},
                {false, false, true, false}, {true, true, false, false},
                {false, true, true, false},  {false, false, false, true}};
    for (const auto& row : rows) {
        first.repeats.clear();
        first.state = ButtonPressed;
        first.leftDown = row.left;
        first.rightDown = row.right;
        first.keyDown = row.key;
        dialog.bar.tick = 0;
        dialog.Tick();
        EXPECT_EQ(std::vector<bool>{row.isRight}, first.repeats);
        EXPECT_TRUE(second.repeats.empty());
    }
}

TEST_F(NButtonBarTest, EachTickRepeatsAndIdleOrHoveredButtonsDoNot) {
    Press(first);
    for (int time = 0; time < 3; ++time)
        dialog.Tick();
    EXPECT_EQ(3u, first.repeats.size());
    dialog.Filter(WM_LBUTTONUP);
    ASSERT_EQ(ButtonHovered, first.state);
    dialog.Tick();
    EXPECT_EQ(3u, first.repeats.size());
}

TEST_F(NButtonBarTest, ADrawItemPaintsItsButton) {
    TestSurface surface(StripFrameWidth, StripFrameHeight, Untouched);
    DRAWITEMSTRUCT item = {};
    item.hwndItem = second.window;
    item.hDC = surface.Dc();
    EXPECT_EQ((Filtered{1, 1}), dialog.Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)));
    EXPECT_EQ(Normal, surface.At(3, 0));
    second.state = ButtonHovered; // it is drawn as it is
    EXPECT_EQ((Filtered{1, 1}), dialog.Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)));
    EXPECT_EQ(Hovered, surface.At(3, 0));
    EXPECT_EQ(ButtonHovered, second.state);
    surface.Clear(Untouched);
    second.Destroy(); // a button without a window is nobody's either
    for (HWND stranger : {dialog.window, static_cast<HWND>(nullptr)}) {
        item.hwndItem = stranger;
        EXPECT_EQ(NotTaken, dialog.Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)));
    }
    EXPECT_EQ(Untouched, surface.At(3, 0));
}

TEST_F(NButtonBarTest, TheDialogsOwnPaintingDrawsTheButtons) {
    SetPixelV(first.display.dc, 3, 0, Untouched);
    InvalidateRect(first.window, nullptr, FALSE);
    UpdateWindow(first.window);
    NWindowDC dc(first.window);
    EXPECT_EQ(Normal, GetPixel(dc.dc, 3, 0));
    EXPECT_EQ(Normal, GetPixel(first.display.dc, 3, 0));
}

TEST_F(NButtonBarTest, WhileAFilterRunsAllButDrawingPassesBy) {
    RecordingButton elsewhere;
    ButtonDialog other; // the flag is one for all bars
    other.Add(elsewhere, 20, 20);
    bool done = false;
    first.onClick = [&] {
        if (done)
            return;
        done = true;
        const uint32_t tick = dialog.bar.tick;
        for (UINT message : {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP})
            EXPECT_EQ(NotTaken, dialog.Filter(message)) << message;
        EXPECT_EQ(NotTaken, dialog.Filter(WM_TIMER, 7787));
        EXPECT_EQ(NotTaken, other.Filter(WM_TIMER, 7787));
        EXPECT_EQ(tick, dialog.bar.tick);
        EXPECT_EQ(0u, other.bar.tick);
        EXPECT_FALSE(first.leftDown);

        TestSurface surface(StripFrameWidth, StripFrameHeight, Untouched);
        EXPECT_EQ((Filtered{1, 1}), dialog.Draw(second, surface.Dc()));
        EXPECT_EQ(Normal, surface.At(3, 0));
        surface.Clear(Untouched);
        EXPECT_EQ((Filtered{1, 1}), other.Draw(elsewhere, surface.Dc()));
        EXPECT_EQ(Normal, surface.At(3, 0));
        // Drawing has not ended the block.
        EXPECT_EQ(NotTaken, dialog.Filter(WM_TIMER, 7787));
    };
    Press(first);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_TRUE(done);
    EXPECT_EQ(Taken, dialog.Filter(WM_TIMER, 7787));
}

TEST_F(NButtonBarTest, AClickMayDisableButtonsAndRepaint) {
    first.onClick = [&] {
        EXPECT_TRUE(dialog.bar.lock.IsLocked());
        first.Disable();
        second.Disable();
        EXPECT_EQ(Disabled, GetPixel(second.display.dc, 1, 0));
    };
    Press(first);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(1u, first.clicks.size());
    EXPECT_EQ(ButtonIdle, first.state);
    EXPECT_FALSE(dialog.bar.lock.IsLocked());
}

TEST_F(NButtonBarTest, AClickMayDestroyTheBar) {
    first.onClick = [&] { dialog.bar.Destroy(); };
    Press(first);
    EXPECT_EQ(NotTaken, dialog.Filter(WM_LBUTTONUP));
    EXPECT_EQ(nullptr, first.window);
}

TEST_F(NButtonBarTest, ARepeatMayDestroyTheBar) {
    first.onRepeat = [&] { dialog.bar.Destroy(); };
    Press(first);
    dialog.Tick();
    EXPECT_EQ(1u, first.repeats.size());
    EXPECT_EQ(nullptr, first.window);
    EXPECT_TRUE(IsFree(dialog.bar.lock));
}

TEST_F(NButtonBarTest, ARepeatMayDestroyTheDialog) {
    first.onRepeat = [&] { DestroyWindow(dialog.window); };
    Press(first);
    SendMessageW(dialog.window, WM_TIMER, dialog.bar.timerId, 0);
    EXPECT_EQ(1u, first.repeats.size());
    EXPECT_FALSE(IsWindow(dialog.window));
    EXPECT_EQ(nullptr, first.window);
    EXPECT_EQ(0, dialog.bar.buttons.Count);
}

TEST_F(NButtonBarTest, ClicksAndRepeatsHaveTheLock) {
    int seen = 0;
    const auto look = [&] {
        EXPECT_FALSE(IsFree(dialog.bar.lock));
        ++seen;
    };
    first.onClick = look;
    first.onRepeat = look;
    const struct {
        UINT down, up;
    } mouseButtons[] = {{WM_LBUTTONDOWN, WM_LBUTTONUP}, {WM_RBUTTONDOWN, WM_RBUTTONUP}};
    for (const auto& mouseButton : mouseButtons) {
        Hover(first);
        dialog.Filter(mouseButton.down);
        dialog.Tick();
        dialog.Filter(mouseButton.up);
        EXPECT_TRUE(IsFree(dialog.bar.lock));
    }
    EXPECT_EQ((std::vector<bool>{false, true}), first.clicks);
    EXPECT_EQ((std::vector<bool>{false, true}), first.repeats);
    EXPECT_EQ(4, seen);
}

// Wanted: the turn is one for all threads too.
TEST_F(NButtonBarTest, AReleaseDuringAClickOfAnotherThreadIsLostUntilTheNext) {
    Press(first);
    std::atomic<bool> clicks = false;
    std::atomic<bool> enough = false;
    std::thread another([&] {
        RecordingButton button; // a window is not needed for a click
        NButtonBar bar;
        bar.buttons.Add(&button);
        button.onClick = [&] {
            clicks = true;
            clicks.notify_one();
            enough.wait(false);
        };
        button.leftDown = true;
        button.state = ButtonPressed;
        int32_t handled = 0;
        bar.OnParentMessage(nullptr, WM_LBUTTONUP, 0, 0, &handled);
    });
    clicks.wait(false);
    EXPECT_EQ(NotTaken, dialog.Filter(WM_LBUTTONUP));
    EXPECT_TRUE(first.leftDown);
    EXPECT_TRUE(first.clicks.empty());
    enough = true;
    enough.notify_one();
    another.join();
    EXPECT_TRUE(first.leftDown);
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_FALSE(first.leftDown);
    EXPECT_EQ(1u, first.clicks.size());
}
