#include "tests/toolkit/recording_window.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/window_facts.h"
#include "toolkit/nwindow.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(NWindowHelpers, WithoutAWindowTheHelpersDoNothing) {
    NWindow object;
    NWindow dialog;
    dialog.ShowDialog(IDD_PLAIN, nullptr, false);
    // Another's, since null stands for all windows to some functions.
    NWindow other;
    other.Create(L"", Place, WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_DISABLED);
    UpdateWindow(other.hwnd);
    ValidateRect(other.hwnd, nullptr);
    HICON icon = MakeIcon();
    POINT point = {3, 4};
    const RECT none = {};

    EXPECT_FALSE(object.EndDialog(1));
    EXPECT_EQ(0, object.Send(WM_GETTEXTLENGTH));
    object.Invalidate(nullptr, true);
    object.Hide();
    object.Maximise();
    object.Enable();
    EXPECT_FALSE(object.IsZoomed());
    EXPECT_FALSE(object.IsIconic());
    EXPECT_FALSE(object.IsVisible());
    object.SetIcons(icon, icon);
    object.SetCursor(IDC_HAND);
    object.SetBackground(3);
    EXPECT_EQ(nullptr, object.GetItem(IDOK));
    EXPECT_FALSE(object.ToClient(point));
    EXPECT_TRUE(none == object.ClientRect());
    EXPECT_TRUE(none == object.WindowRect());
    EXPECT_EQ(0, object.Width());
    EXPECT_EQ(0, object.Height());
    object.SetPos(1, 2, 3, 4);
    object.Centre();
    object.SetRedraw(true, true);
    EXPECT_EQ(0, object.DlgUnitsX(50));
    EXPECT_EQ(0, object.DlgUnitsY(50));
    EXPECT_EQ(0, object.DlgUnitsX(50, dialog.hwnd));
    EXPECT_EQ(0, object.DlgUnitsY(50, dialog.hwnd));

    EXPECT_FALSE(GetUpdateRect(other.hwnd, nullptr, FALSE));
    EXPECT_TRUE(other.IsVisible());
    EXPECT_FALSE(other.IsZoomed());
    EXPECT_FALSE(IsWindowEnabled(other.hwnd));
    EXPECT_TRUE(Place == other.WindowRect());
    EXPECT_EQ(3, point.x);
    EXPECT_EQ(4, point.y);
    EXPECT_EQ(nullptr, object.bigIcon);
    EXPECT_TRUE(IsIcon(icon)); // still the caller's
    DestroyIcon(icon);
}

TEST(NWindowHelpers, SendReachesTheWindow) {
    RecordingWindow object;
    object.Make(L"Four");
    EXPECT_EQ(4, object.Send(WM_GETTEXTLENGTH));
}

TEST(NWindowHelpers, InvalidateTakesARectangleOrAll) {
    NWindow object;
    object.Create(L"", Place, WS_POPUP | WS_VISIBLE);
    const RECT part = {10, 20, 30, 50};
    RECT update = {};
    ValidateRect(object.hwnd, nullptr);
    object.Invalidate(&part, false);
    EXPECT_TRUE(GetUpdateRect(object.hwnd, &update, FALSE));
    EXPECT_TRUE(part == update);
    object.Invalidate(nullptr, false);
    GetUpdateRect(object.hwnd, &update, FALSE);
    EXPECT_TRUE(object.ClientRect() == update);
}

TEST(NWindowHelpers, InvalidateErasesIfItIsTold) {
    for (bool erase : {false, true}) {
        RecordingWindow object;
        object.Make(L"", WS_POPUP | WS_VISIBLE);
        UpdateWindow(object.hwnd);
        object.calls.clear();
        object.Invalidate(nullptr, erase);
        UpdateWindow(object.hwnd);
        EXPECT_TRUE(Contains(object.calls, Call("OnPaint", 1)));
        const bool erased =
            std::any_of(object.calls.begin(), object.calls.end(), [](const std::string& call) {
                return call.starts_with("OnEraseBackground");
            });
        EXPECT_EQ(erase, erased);
    }
}

TEST(NWindowHelpers, ShowsHidesAndEnables) {
    NWindow object;
    object.Create(L"", Place, WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_DISABLED);
    EXPECT_TRUE(object.IsVisible());
    EXPECT_FALSE(object.IsZoomed());
    object.Maximise();
    EXPECT_TRUE(object.IsZoomed());
    object.Hide();
    EXPECT_FALSE(object.IsVisible());
    EXPECT_FALSE(IsWindowEnabled(object.hwnd));
    object.Enable();
    EXPECT_TRUE(IsWindowEnabled(object.hwnd));
    EXPECT_FALSE(object.IsIconic());
    ShowWindow(object.hwnd, SW_MINIMIZE);
    EXPECT_TRUE(object.IsIconic());
}

TEST(NWindowHelpers, SetIconsTakesTheIconsAndKeepsCopies) {
    NWindow object;
    object.Create(L"", Place, WS_POPUP);
    HICON big = MakeIcon();
    HICON little = MakeIcon();
    object.SetIcons(big, little);
    EXPECT_FALSE(IsIcon(big));
    EXPECT_FALSE(IsIcon(little));
    EXPECT_TRUE(IsIcon(object.bigIcon));
    EXPECT_TRUE(IsIcon(object.smallIcon));
    EXPECT_NE(object.bigIcon, object.smallIcon);
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(object.bigIcon),
              GetClassLongPtrW(object.hwnd, GCLP_HICON));
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(object.smallIcon),
              GetClassLongPtrW(object.hwnd, GCLP_HICONSM));
    // New ones end the former copies.
    HICON formerBig = object.bigIcon;
    HICON formerSmall = object.smallIcon;
    object.SetIcons(MakeIcon(), nullptr);
    EXPECT_FALSE(IsIcon(formerBig));
    EXPECT_FALSE(IsIcon(formerSmall));
    EXPECT_TRUE(IsIcon(object.bigIcon));
    EXPECT_EQ(nullptr, object.smallIcon);
}

TEST(NWindowHelpers, SetCursorChangesTheClassAndEndsTheStoredCursor) {
    NWindow object;
    object.Create(L"", Place, WS_POPUP);
    EXPECT_EQ(0u, GetClassLongPtrW(object.hwnd, GCLP_HCURSOR));
    HICON stored = MakeIcon();
    object.cursor = static_cast<HCURSOR>(stored);
    object.SetCursor(IDC_HAND);
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(LoadCursorW(nullptr, IDC_HAND)),
              GetClassLongPtrW(object.hwnd, GCLP_HCURSOR));
    EXPECT_FALSE(IsIcon(stored));
    EXPECT_EQ(nullptr, object.cursor);
}

TEST(NWindowHelpers, SetBackgroundGivesTheClassABrush) {
    NWindow object;
    object.Create(L"", Place, WS_POPUP | WS_VISIBLE);
    const struct {
        int32_t index;
        ULONG_PTR brush;
    } cases[] = {{COLOR_BTNFACE, COLOR_BTNFACE + 1}, {1, 2}, {0, COLOR_WINDOW + 1}};
    for (const auto& c : cases) {
        ValidateRect(object.hwnd, nullptr);
        object.SetBackground(c.index);
        EXPECT_EQ(c.brush, GetClassLongPtrW(object.hwnd, GCLP_HBRBACKGROUND));
        RECT update = {};
        GetUpdateRect(object.hwnd, &update, FALSE);
        EXPECT_TRUE(object.ClientRect() == update);
    }
}

TEST(NWindowHelpers, GetItemAndRectanglesAreThePlatforms) {
    NWindow object;
    object.ShowDialog(IDD_PLAIN, nullptr, false);
    EXPECT_EQ(GetDlgItem(object.hwnd, IDOK), object.GetItem(IDOK));
    EXPECT_NE(nullptr, object.GetItem(IDOK));
    EXPECT_EQ(nullptr, object.GetItem(77));
    RECT client = {};
    RECT window = {};
    GetClientRect(object.hwnd, &client);
    GetWindowRect(object.hwnd, &window);
    EXPECT_TRUE(client == object.ClientRect());
    EXPECT_TRUE(window == object.WindowRect());
    EXPECT_EQ(window.right - window.left, object.Width());
    EXPECT_EQ(window.bottom - window.top, object.Height());
    EXPECT_LT(client.bottom, object.Height());
    POINT corner = {0, 0};
    ClientToScreen(object.hwnd, &corner);
    EXPECT_TRUE(object.ToClient(corner));
    EXPECT_EQ(0, corner.x);
    EXPECT_EQ(0, corner.y);
}

TEST(NWindowHelpers, SetPosKeepsWhatIsNotGiven) {
    constexpr int32_t Keep = -12345;
    const struct {
        int32_t x, y, width, height;
        RECT expected;
    } cases[] = {
        {Keep, Keep, 200, Keep, {100, 80, 300, 280}},
        {Keep, Keep, Keep, 50, {100, 80, 400, 130}},
        {7, Keep, Keep, Keep, {7, 80, 307, 280}},
        {Keep, 9, Keep, Keep, {100, 9, 400, 209}},
        {1, 2, 30, 40, {1, 2, 31, 42}},
        {Keep, Keep, Keep, Keep, Place},
        {-20, -30, Keep, Keep, {-20, -30, 280, 170}},
    };
    for (const auto& c : cases) {
        NWindow object;
        object.Create(L"", Place, WS_POPUP);
        object.SetPos(c.x, c.y, c.width, c.height);
        EXPECT_TRUE(c.expected == object.WindowRect());
    }
}

TEST(NWindowHelpers, SetPosOfAChildGoesByItsParent) {
    NWindow parent;
    parent.Create(L"", Place, WS_POPUP | WS_BORDER);
    NWindow child;
    child.Create(L"", {5, 6, 25, 36}, WS_CHILD, 0, parent.hwnd);
    child.SetPos(NWindow::KeepPlace, NWindow::KeepPlace, 50, NWindow::KeepPlace);
    RECT place = child.WindowRect();
    MapWindowPoints(nullptr, parent.hwnd, reinterpret_cast<POINT*>(&place), 2);
    const RECT expected = {5, 6, 55, 36};
    EXPECT_TRUE(expected == place);
}

TEST(NWindowHelpers, SetPosLeavesTheOrderOfWindowsAndTheActiveOne) {
    struct Looking : RecordingWindow {
        UINT flags = 0;
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM lParam, int32_t*) override {
            if (message == WM_WINDOWPOSCHANGING)
                flags = reinterpret_cast<const WINDOWPOS*>(lParam)->flags;
            return 0;
        }
    } object;
    object.Make();
    object.SetPos(1, 2, 3, 4);
    constexpr UINT Wanted = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
    EXPECT_EQ(Wanted, object.flags & (Wanted | SWP_NOMOVE | SWP_NOSIZE));
}

TEST(NWindowHelpers, CentreHalvesTheDesktopAndTheWindowEachCutOff) {
    RECT desktop = {};
    GetClientRect(GetDesktopWindow(), &desktop);
    for (LONG odd : {0, 1}) {
        NWindow object;
        object.Create(L"", {3, 4, 303 + odd, 204 + odd}, WS_POPUP);
        object.Centre();
        EXPECT_EQ(desktop.right / 2 - 150, object.WindowRect().left);
        EXPECT_EQ(desktop.bottom / 2 - 100, object.WindowRect().top);
        EXPECT_EQ(300 + odd, object.Width());
        EXPECT_EQ(200 + odd, object.Height());
    }
}

TEST(NWindowHelpers, SetRedrawTurnsDrawingOffAndOn) {
    struct Looking : RecordingWindow {
        std::vector<WPARAM> values;
        LRESULT OnMessage(HWND, UINT message, WPARAM wParam, LPARAM, int32_t* into) override {
            // Claimed, so that an invalidation shows with drawing off too.
            if (message == WM_SETREDRAW) {
                values.push_back(wParam);
                *into = 1;
            }
            return 0;
        }
    } object;
    object.Make(L"", WS_POPUP | WS_VISIBLE);
    const struct {
        bool on, repaint, invalidates;
    } cases[] = {
        {false, true, false}, {true, false, false}, {false, false, false}, {true, true, true}};
    for (const auto& c : cases) {
        object.values.clear();
        ValidateRect(object.hwnd, nullptr);
        object.SetRedraw(c.on, c.repaint);
        EXPECT_EQ(std::vector<WPARAM>{c.on ? 1u : 0u}, object.values);
        EXPECT_EQ(c.invalidates, GetUpdateRect(object.hwnd, nullptr, FALSE));
    }
    object.calls.clear();
    UpdateWindow(object.hwnd);
    ASSERT_FALSE(object.calls.empty());
    EXPECT_TRUE(object.calls[0].starts_with("OnEraseBackground") ||
                object.calls[1].starts_with("OnEraseBackground"));
}

TEST(NWindowHelpers, DlgUnitsGoByTheFontOfTheDialog) {
    NWindow object;
    object.ShowDialog(IDD_PLAIN, nullptr, false);
    RECT button = {};
    GetClientRect(object.GetItem(IDOK), &button);
    EXPECT_EQ(button.right, object.DlgUnitsX(50));
    EXPECT_EQ(button.bottom, object.DlgUnitsY(14));
    // By another's.
    NWindow plain;
    plain.Create(L"", Place, WS_POPUP);
    EXPECT_EQ(button.right, plain.DlgUnitsX(50, object.hwnd));
    EXPECT_EQ(button.bottom, plain.DlgUnitsY(14, object.hwnd));
    EXPECT_EQ(50, plain.DlgUnitsX(50));
}
