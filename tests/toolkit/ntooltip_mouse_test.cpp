#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/tip_world.h"
#include "toolkit/ntooltip.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);
constexpr COLORREF Ground = 0x123456;

std::vector<std::string> clicks; // the items' values, in order

void NoteClick(void* value, NToolTipItem* item) {
    clicks.push_back(std::string(static_cast<const char*>(value)) + " at " +
                     std::to_string(item->x));
}

// A tip of 200 by 100, that is up, with an icon at (10, 10), another at
// (60, 10) and a text at (10, 60).
class TipMouse : public testing::Test {
protected:
    TipMouse() {
        clicks.clear();
        world.mouse = POINT{650, 510};
        spec.toolRect = {600, 500, 700, 520};
        spec.noFade = true;
        spec.scene.AddFill({.right = 0x20000, .bottom = 0x20000, .colour = Ground});
        AddIcon(10, "first");
        AddIcon(60, "second");
        NToolTipItem& text = *spec.items.Add();
        text.x = 10;
        text.y = 60;
        text.text = L"Click";
        text.onClick = NoteClick;
        text.clickValue = const_cast<char*>("text");
    }

    void AddIcon(int32_t x, const char* value) {
        NToolTipItem& item = *spec.items.Add();
        item.x = x;
        item.y = 10;
        item.onClick = NoteClick;
        item.clickValue = const_cast<char*>(value);
        ASSERT_TRUE(item.iconNormal.Load(IDI_MARK, 16, 16)); // red
        ASSERT_TRUE(item.iconHover.Load(IDI_MARK, 32, 32));  // green
        ASSERT_TRUE(item.iconDown.Load(IDI_MARK, 32, 32));
    }

    void Show() {
        tip.Set(spec, 200, 100);
        world.Turn();
        world.Turn(1001);
        ASSERT_TRUE(tip.IsVisible());
        world.TakeTurn(); // it is painted
    }

    void Mouse(UINT message, int x, int y) const {
        SendMessageW(tip.hwnd, message, 0, MAKELPARAM(x, y));
    }
    std::vector<int> States() { return {tip.items[0]->iconState, tip.items[1]->iconState}; }
    COLORREF PixelAt(int x, int y) const {
        const NWindowDC dc(tip.hwnd);
        return GetPixel(dc.dc, x, y);
    }

    using Ints = std::vector<int>;
    using Clicks = std::vector<std::string>;

    TipTurns world;
    NToolTipSpec spec;
    struct : NToolTip {
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
            erased += message == WM_ERASEBKGND;
            return 0;
        }
        int erased = 0;
    } tip;
};
} // namespace

TEST_F(TipMouse, TheSceneIsPaintedWithTheItemsOverIt) {
    Show();
    EXPECT_EQ(Ground, PixelAt(0, 0));
    EXPECT_EQ(Ground, PixelAt(199, 99));
    EXPECT_EQ(Red, PixelAt(10, 10));
    EXPECT_EQ(Red, PixelAt(75, 25));
    EXPECT_EQ(Ground, PixelAt(76, 25));
    int blue = 0;
    for (int y = 60; y < 80; ++y)
        for (int x = 10; x < 60; ++x)
            blue += PixelAt(x, y) == 0xFF0000;
    EXPECT_GT(blue, 20); // the text with its line
}

TEST_F(TipMouse, AnIconUnderTheCursorChangesAndChangesBack) {
    Show();
    Mouse(WM_MOUSEMOVE, 12, 12);
    EXPECT_EQ((Ints{1, 0}), States());
    world.TakeTurn();
    EXPECT_EQ(Green, PixelAt(12, 12));
    EXPECT_EQ(Red, PixelAt(62, 12));
    Mouse(WM_MOUSEMOVE, 76, 26); // the far edges are the item's
    EXPECT_EQ((Ints{0, 1}), States());
    world.TakeTurn();
    EXPECT_EQ(Red, PixelAt(12, 12));
    Mouse(WM_MOUSEMOVE, 77, 26);
    EXPECT_EQ((Ints{0, 0}), States());
}

TEST_F(TipMouse, OnlyAChangeIsRepainted) {
    Show();
    Mouse(WM_MOUSEMOVE, 100, 90);
    EXPECT_FALSE(GetUpdateRect(tip.hwnd, nullptr, FALSE));
    Mouse(WM_MOUSEMOVE, 12, 12);
    RECT changed = {};
    EXPECT_TRUE(GetUpdateRect(tip.hwnd, &changed, FALSE));
    EXPECT_EQ(200, changed.right);
    EXPECT_EQ(100, changed.bottom);
}

TEST_F(TipMouse, AChangeIsErasedBeforeItIsRepainted) {
    Show();
    tip.erased = 0;
    InvalidateRect(tip.hwnd, nullptr, FALSE);
    world.TakeTurn();
    EXPECT_EQ(0, tip.erased);
    Mouse(WM_MOUSEMOVE, 12, 12);
    world.TakeTurn();
    EXPECT_EQ(1, tip.erased);
}

TEST_F(TipMouse, AnIconIsClickedWhereItWasPressed) {
    for (UINT button : {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN}) {
        clicks.clear();
        Show();
        Mouse(button, 12, 12);
        EXPECT_EQ((Ints{2, 0}), States());
        EXPECT_TRUE(tip.items[0]->pressed);
        EXPECT_FALSE(tip.items[1]->pressed);
        EXPECT_TRUE(clicks.empty());
        Mouse(button + 1, 12, 12);
        EXPECT_EQ((Clicks{"first at 10"}), clicks);
        EXPECT_EQ((Ints{1, 0}), States());
        EXPECT_FALSE(tip.items[0]->pressed);
        EXPECT_TRUE(tip.IsVisible());
    }
}

TEST_F(TipMouse, AnIconThatIsLeftWhilePressedIsNotClicked) {
    Show();
    Mouse(WM_LBUTTONDOWN, 12, 12);
    Mouse(WM_MOUSEMOVE, 62, 12);
    EXPECT_EQ((Ints{0, 1}), States());
    EXPECT_TRUE(tip.items[0]->pressed);
    Mouse(WM_LBUTTONUP, 62, 12);
    EXPECT_TRUE(clicks.empty());
    EXPECT_FALSE(tip.items[0]->pressed);
}

TEST_F(TipMouse, AnIconThatIsComeBackToWhilePressedIsClicked) {
    Show();
    Mouse(WM_LBUTTONDOWN, 12, 12);
    Mouse(WM_MOUSEMOVE, 100, 90);
    Mouse(WM_MOUSEMOVE, 12, 12);
    EXPECT_EQ((Ints{2, 0}), States());
    Mouse(WM_LBUTTONUP, 12, 12);
    EXPECT_EQ((Clicks{"first at 10"}), clicks);
}

// Wanted: the icon's state counts, which a move alone changes.
TEST_F(TipMouse, AnIconIsClickedAlsoByAReleaseOutsideWithoutAMove) {
    Show();
    Mouse(WM_LBUTTONDOWN, 12, 12);
    Mouse(WM_LBUTTONUP, 100, 90);
    EXPECT_EQ((Clicks{"first at 10"}), clicks);
    EXPECT_EQ((Ints{0, 0}), States());
}

// Wanted: it needs no press.
TEST_F(TipMouse, ATextIsClickedWhereTheButtonGoesUp) {
    Show();
    Mouse(WM_LBUTTONUP, 12, 65);
    EXPECT_EQ((Clicks{"text at 10"}), clicks);
    Mouse(WM_LBUTTONDOWN, 12, 65);
    Mouse(WM_LBUTTONUP, 190, 95);
    EXPECT_EQ(1u, clicks.size());
}

TEST_F(TipMouse, AllItemsUnderTheCursorAreClickedInOrder) {
    spec.items[1]->x = 20; // over the first
    Show();
    Mouse(WM_LBUTTONDOWN, 22, 12);
    EXPECT_EQ((Ints{2, 2}), States());
    Mouse(WM_LBUTTONUP, 22, 12);
    EXPECT_EQ((Clicks{"first at 10", "second at 20"}), clicks);
}

TEST_F(TipMouse, AClickOnAnItemWithoutACallClosesTheTip) {
    spec.items[2]->onClick = nullptr;
    Show();
    Mouse(WM_LBUTTONUP, 12, 65);
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_NE(0, tip.suppressed);
    world.Turn(5000);
    world.Turn(5000);
    EXPECT_EQ(nullptr, tip.hwnd); // until the cursor has left
    world.mouse = POINT{};
    world.Turn();
    world.mouse = POINT{650, 510};
    world.Turn();
    world.Turn(1001);
    EXPECT_TRUE(tip.IsVisible());
}

TEST_F(TipMouse, AnIconWithoutACallClosesTheTipToo) {
    spec.items[1]->onClick = nullptr;
    Show();
    Mouse(WM_LBUTTONDOWN, 62, 12);
    EXPECT_TRUE(tip.IsVisible());
    Mouse(WM_LBUTTONUP, 62, 12);
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_FALSE(tip.items[1]->pressed);
}

TEST_F(TipMouse, APointLeftOfTheTipHitsNothing) {
    Show();
    Mouse(WM_LBUTTONDOWN, -1, 12);
    EXPECT_EQ((Ints{0, 0}), States());
    Mouse(WM_LBUTTONUP, -1, 65);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(TipMouse, AThrowingCallLeavesTheTipAlone) {
    spec.items[2]->onClick = [](void*, NToolTipItem*) { throw std::string("not for the thread"); };
    Show();
    Mouse(WM_LBUTTONUP, 12, 65);
    EXPECT_TRUE(tip.IsVisible());
    EXPECT_TRUE(tipLock.TryLock());
    tipLock.Unlock();
}
