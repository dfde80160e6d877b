#include "tests/support/nstring_printer.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/tip_owner_window.h"
#include "tests/toolkit/tip_world.h"
#include "toolkit/ntooltip.h"
#include "toolkit/window_registry.h"

#include <gtest/gtest.h>

#include <vector>

namespace {
constexpr RECT Area = {600, 500, 700, 520};
constexpr POINT InArea = {650, 510};
constexpr POINT Outside = {10, 10};
constexpr DWORD DefaultDelay = 1000;

class Tips : public testing::Test {
protected:
    Tips() { world.mouse = InArea; }

    static NToolTipText TextOfArea() {
        NToolTipText record;
        record.toolRect = Area;
        record.text = L"What it is";
        return record;
    }
    static NToolTipSpec& WithArea(NToolTipSpec& spec) {
        spec.toolRect = Area;
        return spec;
    }
    // Two turns, of which the second is just past the delay.
    static void LetItShow(DWORD delay = DefaultDelay) {
        TipTurns::Turn();
        TipTurns::Turn(delay + 1);
    }
    bool IsUp() const { return tip.IsVisible(); }

    TipTurns world;
    NToolTip tip;
};

int AlphaOf(HWND window) {
    BYTE alpha = 0;
    DWORD flags = 0;
    if (!GetLayeredWindowAttributes(window, nullptr, &alpha, &flags))
        return -1;
    return alpha;
}

NToolTipItem& AddTextItem(NToolTipSpec& spec, int32_t x, int32_t y, const wchar_t* text) {
    NToolTipItem& item = *spec.items.Add();
    item.x = x;
    item.y = y;
    item.text = text;
    return item;
}

SIZE SizeOf(const NWindow& window) {
    return {window.Width(), window.Height()};
}

bool HasClass(const NString& name) {
    WNDCLASSEXW record = {};
    record.cbSize = sizeof record;
    return GetClassInfoExW(GetModuleHandleW(nullptr), name.Text, &record) != FALSE;
}
} // namespace

TEST_F(Tips, ItsMembersStandInTheirOrder) {
    const void* const members[] = {
        &tip.mode,       &tip.scene,     &tip.items,      &tip.target, &tip.targetParent,
        &tip.toolRect,   &tip.rectOwner, &tip.fixedX,     &tip.fixedY, &tip.minWidth,
        &tip.minHeight,  &tip.delayMs,   &tip.durationMs, &tip.noFade, &tip.closeRequest,
        &tip.delayStart, &tip.shownAt,   &tip.suppressed, &tip.alpha};
    for (size_t i = 1; i < std::size(members); ++i)
        EXPECT_LT(members[i - 1], members[i]) << i;
}

TEST_F(Tips, TheFieldsOfTheRecordsStandInTheirOrder) {
    NToolTipSpec spec;
    const void* const ofSpec[] = {&spec.mode,   &spec.target, &spec.toolRect, &spec.rectOwner,
                                  &spec.fixedX, &spec.fixedY, &spec.delayMs,  &spec.durationMs,
                                  &spec.noFade, &spec.scene,  &spec.items};
    for (size_t i = 1; i < std::size(ofSpec); ++i)
        EXPECT_LT(ofSpec[i - 1], ofSpec[i]) << i;
    NToolTipText text;
    const void* const ofText[] = {&text.target, &text.toolRect, &text.rectOwner, &text.fixedX,
                                  &text.fixedY, &text.text,     &text.delayMs,   &text.durationMs,
                                  &text.icon,   &text.noFade};
    for (size_t i = 1; i < std::size(ofText); ++i)
        EXPECT_LT(ofText[i - 1], ofText[i]) << i;
}

TEST_F(Tips, IsUpOnceTheCursorHasRestedForLongerThanTheDelay) {
    struct Row {
        uint32_t given;
        DWORD delay;
    };
    for (const Row& row : {Row{0, 1000}, Row{250, 250}, Row{3000, 3000}}) {
        NToolTipText record = TextOfArea();
        record.delayMs = row.given;
        tip.SetText(record);
        world.Turn();
        world.Turn(row.delay);
        EXPECT_FALSE(IsUp()) << row.given;
        world.Turn(1);
        EXPECT_TRUE(IsUp()) << row.given;
        EXPECT_EQ(0u, tip.delayStart);
        EXPECT_EQ(world.now, tip.shownAt);
        EXPECT_NE(0, tip.suppressed);
        tip.Clear();
    }
}

TEST_F(Tips, LeavingStartsTheDelayAnew) {
    tip.SetText(TextOfArea());
    world.Turn();
    world.Turn(900);
    world.mouse = Outside;
    world.Turn();
    EXPECT_EQ(0u, tip.delayStart);
    world.mouse = InArea;
    world.Turn();
    world.Turn(DefaultDelay);
    EXPECT_FALSE(IsUp());
    world.Turn(1);
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, AllFourEdgesBelongToTheArea) {
    struct Row {
        POINT cursor;
        bool inside;
    };
    const Row rows[] = {{{600, 510}, true},  {{599, 510}, false}, {{700, 510}, true},
                        {{701, 510}, false}, {{650, 500}, true},  {{650, 499}, false},
                        {{650, 520}, true},  {{650, 521}, false}};
    tip.SetText(TextOfArea());
    for (const Row& row : rows) {
        world.mouse = Outside;
        world.Turn();
        world.mouse = row.cursor;
        world.Turn();
        EXPECT_EQ(row.inside, tip.delayStart != 0) << row.cursor.x << " " << row.cursor.y;
    }
}

TEST_F(Tips, AnAreaOfAWindowMovesWithIt) {
    TipOwnerWindow owner;
    NToolTipText record = TextOfArea();
    record.toolRect = {20, 50, 40, 60};
    record.rectOwner = owner.hwnd;
    tip.SetText(record);
    world.mouse = POINT{330, 355};
    world.Turn();
    EXPECT_NE(0u, tip.delayStart);
    owner.SetPos(100, 500, NWindow::KeepPlace, NWindow::KeepPlace);
    world.Turn();
    EXPECT_EQ(0u, tip.delayStart);
    world.mouse = POINT{130, 555};
    LetItShow();
    ASSERT_TRUE(IsUp());
    EXPECT_EQ(550 - 2, tip.WindowRect().bottom);
}

TEST_F(Tips, AWatchedWindowCountsWhereTheCursorIsOnIt) {
    TipOwnerWindow owner;
    NToolTipText record = TextOfArea(); // the area doesn't count then
    record.target = owner.child.hwnd;
    tip.SetText(record);
    EXPECT_EQ(owner.hwnd, tip.targetParent);
    world.Turn();
    EXPECT_EQ(0u, tip.delayStart);
    world.mouse = POINT{400, 380}; // on its parent
    world.Turn();
    EXPECT_EQ(0u, tip.delayStart);
    world.mouse = POINT{320, 320};
    LetItShow();
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, AWatchedWindowWithoutAParentIsNotWatched) {
    TipOwnerWindow owner;
    NToolTipText record;
    record.target = owner.hwnd;
    tip.SetText(record);
    world.mouse = POINT{400, 380};
    world.Turn();
    EXPECT_EQ(0u, tip.delayStart);
    record.toolRect = Area;
    tip.SetText(record);
    world.mouse = InArea;
    world.Turn();
    EXPECT_NE(0u, tip.delayStart);
}

TEST_F(Tips, AWatchedWindowCountsForAFixedOneTooUnlessItHasNoParent) {
    TipOwnerWindow owner;
    struct Row {
        HWND target;
        POINT cursor;
        bool inside;
    };
    const Row rows[] = {{owner.child.hwnd, {320, 320}, true},
                        {owner.child.hwnd, Outside, false},
                        {owner.hwnd, {400, 380}, true},
                        {owner.hwnd, Outside, true}};
    for (const Row& row : rows) {
        NToolTipText record;
        record.target = row.target;
        record.fixedX = 220;
        record.fixedY = 330;
        tip.SetText(record);
        world.mouse = row.cursor;
        world.Turn();
        EXPECT_EQ(row.inside, tip.delayStart != 0) << row.cursor.x;
    }
}

TEST_F(Tips, LeavingTakesItDownAndComingBackShowsItAgain) {
    tip.SetText(TextOfArea());
    LetItShow();
    ASSERT_TRUE(IsUp());
    world.mouse = Outside;
    world.Turn();
    EXPECT_EQ(nullptr, tip.hwnd);
    world.mouse = InArea;
    LetItShow();
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, ItStaysForItsTime) {
    struct Row {
        uint32_t given;
        DWORD duration;
    };
    for (const Row& row : {Row{0, 10000}, Row{700, 700}, Row{30000, 30000}}) {
        NToolTipText record = TextOfArea();
        record.durationMs = row.given;
        tip.SetText(record);
        LetItShow();
        world.Turn(row.duration);
        EXPECT_TRUE(IsUp()) << row.given;
        world.Turn(1);
        EXPECT_EQ(nullptr, tip.hwnd) << row.given;
        EXPECT_NE(0, tip.suppressed);
    }
}

TEST_F(Tips, OneThatTimedOutComesBackOnlyAfterTheCursorHasLeftAndComeBack) {
    tip.SetText(TextOfArea());
    LetItShow();
    world.Turn(10001);
    ASSERT_FALSE(IsUp());
    for (int turn = 0; turn < 100; ++turn)
        world.Turn(500);
    EXPECT_FALSE(IsUp());
    world.mouse = Outside;
    world.Turn();
    EXPECT_EQ(0, tip.suppressed);
    world.mouse = InArea;
    LetItShow();
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, OneForEverStays) {
    NToolTipText record = TextOfArea();
    record.durationMs = 0xFFFFFFFF;
    tip.SetText(record);
    LetItShow();
    world.Turn(0x7FFFFFFF);
    world.Turn(0x7FFFFFFF);
    EXPECT_TRUE(IsUp());
    // Wanted: its layered window never gets an opacity.
    EXPECT_EQ(-1, tip.alpha);
    EXPECT_EQ(-1, AlphaOf(tip.hwnd));
}

TEST_F(Tips, OneForEverWithoutAFadeStaysToo) {
    NToolTipText record = TextOfArea();
    record.durationMs = 0xFFFFFFFF;
    record.noFade = true;
    tip.SetText(record);
    LetItShow();
    world.Turn(0x7FFFFFFF);
    world.Turn(0x7FFFFFFF);
    EXPECT_TRUE(IsUp());
    EXPECT_EQ(-1, tip.alpha);
    EXPECT_EQ(0, GetWindowLongPtrW(tip.hwnd, GWL_EXSTYLE) & WS_EX_LAYERED);
    world.mouse = Outside;
    world.Turn();
    EXPECT_FALSE(IsUp());
}

TEST_F(Tips, TheTickCountMayWrapAroundMeanwhile) {
    world.now = 0xFFFFFFFF - 1500;
    tip.SetText(TextOfArea());
    LetItShow();
    ASSERT_TRUE(IsUp());
    world.Turn(9000);
    EXPECT_LT(world.now, 10000u);
    EXPECT_TRUE(IsUp());
    world.Turn(1001);
    EXPECT_FALSE(IsUp());
}

// Wanted: it means that nothing is counted yet.
TEST_F(Tips, ADelayThatBeginsAtTickCountZeroBeginsATurnLater) {
    tip.SetText(TextOfArea());
    world.now = 0;
    world.TakeTurn();
    world.Turn(DefaultDelay + 1);
    EXPECT_FALSE(IsUp());
    world.Turn(DefaultDelay + 1);
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, ItsWindowIsOfTheStyleThatTheModeAsksFor) {
    struct Row {
        int32_t mode;
        bool noFade;
        DWORD style;
        DWORD exStyle;
    };
    constexpr DWORD Shown = WS_VISIBLE | WS_CLIPSIBLINGS; // which the platform adds
    const Row rows[] = {
        {0, false, 0x80000000 | Shown, WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_LAYERED},
        {0, true, 0x80000000 | Shown, WS_EX_TOPMOST | WS_EX_TOOLWINDOW},
        {1, false, 0x80400000 | Shown,
         WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_LAYERED | WS_EX_WINDOWEDGE},
        {2, true, 0x80000000 | Shown, WS_EX_TOPMOST | WS_EX_TOOLWINDOW},
    };
    for (const Row& row : rows) {
        NToolTipSpec spec;
        spec.mode = row.mode;
        spec.noFade = row.noFade;
        tip.Set(WithArea(spec), 40, 20);
        LetItShow();
        ASSERT_TRUE(IsUp());
        EXPECT_EQ(row.style, static_cast<DWORD>(GetWindowLongPtrW(tip.hwnd, GWL_STYLE)));
        EXPECT_EQ(row.exStyle, static_cast<DWORD>(GetWindowLongPtrW(tip.hwnd, GWL_EXSTYLE)));
        EXPECT_EQ(0x20028u, GetClassLongPtrW(tip.hwnd, GCL_STYLE));
        EXPECT_TRUE(IsWindowEnabled(tip.hwnd)); // it was made disabled
        EXPECT_EQ(0, GetWindowTextLengthW(tip.hwnd));
        wchar_t name[64] = {};
        GetClassNameW(tip.hwnd, name, 64);
        EXPECT_EQ(tip.className, name);
    }
}

TEST_F(Tips, ItIsMadeDisabledAndEnabledOnceItIsShown) {
    struct Enabling : NToolTip {
        LRESULT OnMessage(HWND, UINT message, WPARAM wParam, LPARAM lParam, int32_t*) override {
            if (message == WM_CREATE)
                style = static_cast<DWORD>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->style);
            if (message == WM_SHOWWINDOW && wParam)
                wasEnabled = IsWindowEnabled(hwnd) != 0;
            return 0;
        }
        DWORD style = 0;
        bool wasEnabled = true;
    } watched;
    watched.SetText(TextOfArea());
    LetItShow();
    EXPECT_EQ(0x88000000u, watched.style & 0x88000000u);
    EXPECT_FALSE(watched.wasEnabled);
    EXPECT_TRUE(IsWindowEnabled(watched.hwnd));
}

TEST_F(Tips, ItDoesNotBecomeTheActiveWindow) {
    TipOwnerWindow owner;
    SetActiveWindow(owner.hwnd);
    tip.SetText(TextOfArea());
    LetItShow();
    ASSERT_TRUE(IsUp());
    EXPECT_NE(tip.hwnd, GetActiveWindow());
}

TEST_F(Tips, ItsOwnerIsTheWatchedWindowElseThatOfTheArea) {
    TipOwnerWindow owner;
    TipOwnerWindow other;
    other.SetPos(700, 700, NWindow::KeepPlace, NWindow::KeepPlace);
    NToolTipText record;
    record.target = owner.child.hwnd;
    record.rectOwner = other.hwnd;
    tip.SetText(record);
    world.mouse = POINT{320, 320};
    LetItShow();
    EXPECT_EQ(owner.hwnd, GetWindow(tip.hwnd, GW_OWNER)); // the child's frame
    record.target = nullptr;
    record.toolRect = {0, 0, 50, 50};
    tip.SetText(record);
    world.mouse = POINT{720, 720};
    LetItShow();
    EXPECT_EQ(other.hwnd, GetWindow(tip.hwnd, GW_OWNER));
    record.rectOwner = nullptr;
    tip.SetText(record);
    world.mouse = POINT{20, 20};
    LetItShow();
    EXPECT_EQ(nullptr, GetWindow(tip.hwnd, GW_OWNER));
}

TEST_F(Tips, TheFirstTurnAfterTheShowMakesItOpaque) {
    tip.SetText(TextOfArea());
    LetItShow();
    EXPECT_EQ(-1, tip.alpha);
    EXPECT_EQ(-1, AlphaOf(tip.hwnd));
    world.Turn();
    EXPECT_EQ(255, tip.alpha);
    EXPECT_EQ(255, AlphaOf(tip.hwnd));
}

TEST_F(Tips, ItFadesAtTheEndOfItsTime) {
    struct Row {
        uint32_t duration;
        DWORD elapsed;
        int alpha;
    };
    const Row rows[] = {{30000, 27500, 255}, {30000, 27510, 254}, {30000, 28750, 128},
                        {30000, 30000, 0},   {3000, 2000, 255},   {3000, 2004, 254},
                        {3000, 2500, 128},   {3000, 3000, 0}};
    for (const Row& row : rows) {
        NToolTipText record = TextOfArea();
        record.durationMs = row.duration;
        tip.SetText(record);
        LetItShow();
        world.Turn(row.elapsed);
        EXPECT_EQ(row.alpha, tip.alpha) << row.elapsed;
        EXPECT_EQ(row.alpha, AlphaOf(tip.hwnd)) << row.elapsed;
    }
}

TEST_F(Tips, OneWithoutAFadeIsNotLayeredAndGoesAtItsTime) {
    NToolTipText record = TextOfArea();
    record.noFade = true;
    tip.SetText(record);
    LetItShow();
    world.Turn(9999);
    EXPECT_TRUE(IsUp());
    EXPECT_EQ(-1, tip.alpha);
    world.Turn(2);
    EXPECT_FALSE(IsUp());
}

TEST_F(Tips, TheOpacityIsSetOnlyWhenItChanges) {
    tip.SetText(TextOfArea());
    LetItShow();
    world.Turn();
    NProcessFade().SetAlpha(tip.hwnd, 77);
    world.Turn();
    EXPECT_EQ(77, AlphaOf(tip.hwnd));
}

TEST_F(Tips, WithoutTheFadeFunctionALayeredTipStaysInvisible) {
    static const NUserDLLFade none;
    tipPlatform.fade = []() -> const NUserDLLFade& { return none; };
    tip.SetText(TextOfArea());
    LetItShow();
    world.Turn();
    EXPECT_EQ(255, tip.alpha);
    EXPECT_EQ(-1, AlphaOf(tip.hwnd));
    world.Turn(10001);
    EXPECT_FALSE(IsUp());
}

TEST_F(Tips, OneWhoseWindowCannotBeMadeIsTriedAgainAfterEachDelay) {
    TipOwnerWindow owner;
    NToolTipText record = TextOfArea();
    // A child can't be moved to the screen and can't own a window once it is
    // gone; the area counts as one of the screen then.
    record.rectOwner = owner.child.hwnd;
    tip.SetText(record);
    owner.child.Destroy();
    for (int attempt = 0; attempt < 3; ++attempt) {
        LetItShow();
        EXPECT_EQ(nullptr, tip.hwnd);
        EXPECT_EQ(world.now, tip.shownAt); // it was tried
        EXPECT_EQ(0u, tip.delayStart);
        EXPECT_EQ(0, tip.suppressed);
    }
    tip.rectOwner = owner.hwnd;
    world.mouse = POINT{Area.left + 300, Area.top + 300};
    LetItShow();
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, ClearOfOneWhoseWindowCannotBeMadeLeavesNoClass) {
    TipOwnerWindow owner;
    NToolTipText record = TextOfArea();
    record.rectOwner = owner.child.hwnd;
    tip.SetText(record);
    owner.child.Destroy();
    LetItShow();
    ASSERT_EQ(nullptr, tip.hwnd);
    const NString name = tip.className;
    ASSERT_TRUE(HasClass(name));
    tip.Clear();
    EXPECT_TRUE(tip.className.IsEmpty());
    EXPECT_FALSE(HasClass(name));
}

TEST_F(Tips, OneThatThrowsKeepsNoneBehindItFromItsTurn) {
    static int thrown;
    thrown = 0;
    tipPlatform.fade = []() -> const NUserDLLFade& {
        ++thrown;
        throw "not for the others";
    };
    tip.SetText(TextOfArea());
    NToolTip other;
    NToolTipText record = TextOfArea();
    record.delayMs = 5000;
    record.noFade = true;
    other.SetText(record);
    LetItShow();
    ASSERT_TRUE(IsUp());
    while (world.now < world.Start + 6000 && !other.IsVisible()) {
        tip.alpha = -1; // so that it throws again
        world.Turn();
    }
    EXPECT_GT(thrown, 10);
    EXPECT_TRUE(other.IsVisible());
}

TEST_F(Tips, TwoOfOverlappingAreasShowAtOnce) {
    NToolTip other;
    tip.SetText(TextOfArea());
    NToolTipText record = TextOfArea();
    record.toolRect = {640, 400, 800, 600};
    other.SetText(record);
    LetItShow();
    EXPECT_TRUE(IsUp());
    EXPECT_TRUE(other.IsVisible());
    world.mouse = POINT{610, 510};
    world.Turn();
    EXPECT_TRUE(IsUp());
    EXPECT_FALSE(other.IsVisible());
}

TEST_F(Tips, ACloseRequestTakesItDownAtTheNextTurn) {
    tip.SetText(TextOfArea());
    LetItShow();
    ASSERT_TRUE(IsUp());
    tip.closeRequest = true;
    world.TakeTurn();
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_FALSE(tip.closeRequest);
}

TEST_F(Tips, ACloseRequestToOneThatIsNotUpTakesATurnOnly) {
    tip.SetText(TextOfArea());
    tip.closeRequest = true;
    world.TakeTurn();
    EXPECT_FALSE(tip.closeRequest);
    EXPECT_EQ(0u, tip.delayStart);
    LetItShow();
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, ATipIsAtItsPlace) {
    TipOwnerWindow owner;
    struct Row {
        const char* name;
        HWND target;
        HWND rectOwner;
        RECT toolRect;
        POINT fixed;
        POINT cursor;
        POINT place;
    };
    const LONG right = GetSystemMetrics(SM_CXSCREEN);
    const Row rows[] = {
        {"above its area", nullptr, nullptr, Area, {}, InArea, {650, 500 - 30 - 2}},
        {"above a window's area",
         nullptr,
         owner.hwnd,
         {0, 0, 80, 80},
         {},
         {350, 320},
         {350, 300 - 30 - 2}},
        {"above the watched window",
         owner.child.hwnd,
         nullptr,
         {},
         {},
         {330, 330},
         {330, 310 - 30 - 2}},
        {"under an area at the top", nullptr, nullptr, {600, 5, 700, 25}, {}, {650, 10}, {650, 26}},
        {"near a cursor deep in its area",
         nullptr,
         nullptr,
         {600, 100, 700, 520},
         {},
         InArea,
         {650, 510 - 30 - 50}},
        {"fixed", nullptr, nullptr, {}, {220, 330}, Outside, {220, 330 - 30 - 2}},
        {"fixed at the top", nullptr, nullptr, {}, {220, 20}, Outside, {220, 22}},
        {"fixed in one direction", nullptr, nullptr, {}, {0, 330}, Outside, {0, 330 - 30 - 2}},
        {"fixed, over the watched window",
         owner.child.hwnd,
         nullptr,
         {},
         {220, 330},
         {330, 330},
         {220, 330 - 30 - 2}},
        {"at the right edge",
         nullptr,
         nullptr,
         {right - 30, 500, right, 520},
         {},
         {right - 20, 510},
         {right - 150, 500 - 30 - 2}},
        {"at the left edge",
         nullptr,
         nullptr,
         {-100, 500, 700, 520},
         {},
         {-40, 510},
         {-40, 500 - 30 - 2}},
    };
    for (const Row& row : rows) {
        NToolTipSpec spec;
        spec.target = row.target;
        spec.rectOwner = row.rectOwner;
        spec.toolRect = row.toolRect;
        spec.fixedX = row.fixed.x;
        spec.fixedY = row.fixed.y;
        world.mouse = row.cursor;
        tip.Set(spec, 150, 30);
        LetItShow();
        ASSERT_TRUE(IsUp()) << row.name;
        const RECT rect = tip.WindowRect();
        EXPECT_EQ(row.place.x, rect.left) << row.name;
        EXPECT_EQ(row.place.y, rect.top) << row.name;
        EXPECT_EQ(row.place.x + 150, rect.right) << row.name;
        EXPECT_EQ(row.place.y + 30, rect.bottom) << row.name;
    }
}

TEST_F(Tips, ItIsAsLargeAsItsSceneWithTheMarginsAndAtLeastTheLeastSize) {
    struct Row {
        int32_t mode;
        int32_t leastWidth;
        int32_t leastHeight;
        LONG width;
        LONG height;
    };
    const Row rows[] = {
        {0, 0, 0, 62, 34}, {1, 0, 0, 68, 40}, {0, 90, 0, 90, 34}, {0, 0, 50, 62, 50}};
    for (const Row& row : rows) {
        NToolTipSpec spec;
        spec.mode = row.mode;
        spec.scene.AddFill({.right = 60, .bottom = 30});
        tip.Set(WithArea(spec), row.leastWidth, row.leastHeight);
        LetItShow();
        ASSERT_TRUE(IsUp());
        EXPECT_EQ(row.width, SizeOf(tip).cx);
        EXPECT_EQ(row.height, SizeOf(tip).cy);
    }
}

TEST_F(Tips, ItHoldsItsItemsWithTheMargins) {
    NToolTipSpec spec;
    NToolTipItem& item = *spec.items.Add();
    item.x = 40;
    item.y = 20;
    ASSERT_TRUE(item.iconNormal.Load(IDI_MARK, 16, 16));
    tip.Set(WithArea(spec));
    LetItShow();
    EXPECT_EQ(40 + 16 + 2, SizeOf(tip).cx);
    EXPECT_EQ(20 + 16 + 4, SizeOf(tip).cy);
    spec.mode = 1;
    tip.Set(spec);
    LetItShow();
    EXPECT_EQ(40 + 16 + 8, SizeOf(tip).cx);
    EXPECT_EQ(20 + 16 + 10, SizeOf(tip).cy);
}

TEST_F(Tips, OneOf131PixelsIsFlatAndOneOf130IsShaded) {
    struct Row {
        int32_t width;
        uint32_t state;
    };
    for (const Row& row : {Row{130, 256}, Row{131, 512}}) {
        NToolTipSpec spec;
        tip.Set(WithArea(spec), row.width, 20);
        LetItShow();
        EXPECT_EQ(row.width, SizeOf(tip).cx);
        EXPECT_EQ(row.state, tip.scene.stateMask);
    }
}

TEST_F(Tips, TheSimpleFormIsPaintedShadedAt130PixelsAndFlatAt131) {
    constexpr COLORREF FlatColour = 0xCFFFFF;
    for (int32_t width : {130, 131}) {
        NToolTipText record = TextOfArea();
        record.text = L"i";
        record.noFade = true;
        tip.SetText(record);
        tip.minWidth = width;
        LetItShow();
        ASSERT_EQ(width, SizeOf(tip).cx);
        world.TakeTurn(); // it is painted
        const NWindowDC dc(tip.hwnd);
        const LONG y = SizeOf(tip).cy - 2;
        const COLORREF left = GetPixel(dc.dc, 1, y);
        const COLORREF right = GetPixel(dc.dc, width - 2, y);
        if (width == 131) {
            EXPECT_EQ(FlatColour, left);
            EXPECT_EQ(FlatColour, right);
        } else {
            EXPECT_GE(GetBValue(left), 0xFE);
            EXPECT_LE(GetBValue(right), 0xCE);
        }
        EXPECT_EQ(0u, GetPixel(dc.dc, 0, y)); // the frame
        EXPECT_EQ(0u, GetPixel(dc.dc, width - 1, y));
    }
}

TEST_F(Tips, ItsSetUpIsKeptWithTheDefaultsOfTheItems) {
    TipOwnerWindow owner;
    NToolTipSpec spec;
    spec.mode = 1;
    spec.target = owner.child.hwnd;
    spec.toolRect = Area;
    spec.rectOwner = owner.hwnd;
    spec.delayMs = 123;
    spec.durationMs = 456;
    spec.noFade = true;
    spec.scene.AddFill({.right = 60, .bottom = 30});
    AddTextItem(spec, 1, 2, L"first");
    NToolTipItem& second = AddTextItem(spec, 3, 4, L"second");
    second.colour = 0x00FF00;
    second.fontSize = 20;
    tip.Set(spec, 7, 8);
    EXPECT_EQ(1, tip.mode);
    EXPECT_EQ(owner.child.hwnd, tip.target);
    EXPECT_EQ(owner.hwnd, tip.targetParent);
    EXPECT_EQ(0, memcmp(&Area, &tip.toolRect, sizeof Area));
    EXPECT_EQ(owner.hwnd, tip.rectOwner);
    EXPECT_EQ(123u, tip.delayMs);
    EXPECT_EQ(456u, tip.durationMs);
    EXPECT_TRUE(tip.noFade);
    EXPECT_EQ(7, tip.minWidth);
    EXPECT_EQ(8, tip.minHeight);
    EXPECT_EQ(1, tip.scene.fills.Count());
    ASSERT_EQ(2, tip.items.Count());
    EXPECT_EQ(14, tip.items[0]->fontSize);
    EXPECT_EQ(0xFF0000u, tip.items[0]->colour);
    EXPECT_EQ(20, tip.items[1]->fontSize);
    EXPECT_EQ(0x00FF00u, tip.items[1]->colour);
}

TEST_F(Tips, TheSimpleFormIsAFullOneInModeZero) {
    TipOwnerWindow owner;
    NToolTipText record;
    record.target = owner.child.hwnd;
    record.toolRect = Area;
    record.rectOwner = owner.hwnd;
    record.text = L"Text";
    record.delayMs = 123;
    record.durationMs = 456;
    record.noFade = true;
    tip.mode = 1;
    tip.SetText(record);
    EXPECT_EQ(0, tip.mode);
    EXPECT_EQ(owner.child.hwnd, tip.target);
    EXPECT_EQ(0, memcmp(&Area, &tip.toolRect, sizeof Area));
    EXPECT_EQ(owner.hwnd, tip.rectOwner);
    EXPECT_EQ(123u, tip.delayMs);
    EXPECT_EQ(456u, tip.durationMs);
    EXPECT_TRUE(tip.noFade);
    EXPECT_EQ(0, tip.minWidth);
    EXPECT_EQ(0, tip.minHeight);
    ASSERT_EQ(1, tip.scene.texts.Count());
    EXPECT_EQ(L"Text", tip.scene.texts[0]->text);
    EXPECT_EQ(0, tip.items.Count());
}

TEST_F(Tips, AFixedOneIsUpAtOnceWhereverTheCursorIs) {
    world.mouse = Outside;
    NToolTipText record;
    record.text = L"Copied";
    record.fixedX = 400;
    record.fixedY = 300;
    record.delayMs = 5000;
    tip.SetText(record);
    EXPECT_TRUE(IsUp()); // Set has waited
    EXPECT_EQ(1u, tip.delayMs);
    EXPECT_EQ(2, world.waits); // a turn to count from, and one past the delay
    EXPECT_EQ(world.Start + 2 * 50, world.now);
    world.Turn(10001);
    EXPECT_FALSE(IsUp());
    world.Turn(5000);
    EXPECT_FALSE(IsUp());
}

TEST_F(Tips, SetWaitsForAFixedOneForTenSecondsAtMost) {
    world.whileWaiting = [] {};
    NToolTipText record;
    record.fixedX = 400;
    tip.SetText(record);
    EXPECT_FALSE(IsUp());
    EXPECT_EQ(10000 / 50, world.waits);
}

TEST_F(Tips, SetWaitsForNoOther) {
    TipOwnerWindow owner;
    NToolTipText record = TextOfArea();
    tip.SetText(record);
    record.fixedX = 400;
    record.target = owner.child.hwnd;
    tip.SetText(record);
    EXPECT_EQ(1u, tip.delayMs);
    EXPECT_EQ(0, world.waits);
}

TEST_F(Tips, ClearOfOneThatIsUpAsksTheThreadAndWaits) {
    tip.SetText(TextOfArea());
    LetItShow();
    const HWND window = tip.hwnd;
    ASSERT_TRUE(IsUp());
    world.whileWaiting = [this] {
        EXPECT_TRUE(tip.closeRequest);
        EXPECT_EQ(1, tipList.Count);
        if (world.waits == 3)
            world.TakeTurn();
    };
    tip.Clear();
    EXPECT_EQ(3, world.waits);
    EXPECT_EQ(world.Start + 50 + 1001 + 3 * 50, world.now);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(0, tipList.Count);
}

TEST_F(Tips, ClearTakesTheWindowDownItselfAfterFiveSeconds) {
    tip.SetText(TextOfArea());
    LetItShow();
    const HWND window = tip.hwnd;
    world.whileWaiting = [] {};
    tip.Clear();
    EXPECT_EQ(5000 / 50, world.waits);
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_FALSE(IsWindow(window)); // this thread has made it here
}

TEST_F(Tips, ClearTakesTheWindowDownWithTheLock) {
    struct Watched : NToolTip {
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
            if (message == WM_DESTROY)
                hadLock = !TipWorld::LockIsFree();
            return 0;
        }
        bool hadLock = false;
    } watched;
    watched.SetText(TextOfArea());
    LetItShow();
    ASSERT_TRUE(watched.IsVisible());
    world.whileWaiting = [] {};
    watched.Clear();
    EXPECT_TRUE(watched.hadLock);
}

TEST_F(Tips, ClearOfOneThatIsHiddenWithItsOwnerTakesItsWindowDownToo) {
    tip.SetText(TextOfArea());
    LetItShow();
    const HWND window = tip.hwnd;
    tip.Hide();
    tip.Clear();
    EXPECT_EQ(1, world.waits);
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Tips, ClearLeavesNothingOfTheSetUp) {
    TipOwnerWindow owner;
    NToolTipSpec spec;
    spec.target = owner.child.hwnd;
    spec.toolRect = Area;
    spec.rectOwner = owner.hwnd;
    spec.fixedX = 400;
    spec.fixedY = 300;
    spec.scene.AddFill({.right = 60, .bottom = 30});
    AddTextItem(spec, 1, 2, L"first");
    tip.Set(spec);
    world.mouse = POINT{320, 320};
    world.Turn();
    ASSERT_NE(0u, tip.delayStart);
    tip.suppressed = 1;
    tip.closeRequest = true;
    tip.Clear();
    EXPECT_EQ(0, tip.scene.fills.Count());
    EXPECT_EQ(0, tip.items.Count());
    EXPECT_EQ(nullptr, tip.target);
    EXPECT_EQ(nullptr, tip.targetParent);
    EXPECT_TRUE(IsRectEmpty(&tip.toolRect));
    EXPECT_EQ(nullptr, tip.rectOwner);
    EXPECT_EQ(0u, tip.delayStart);
    EXPECT_EQ(0, tip.fixedX);
    EXPECT_EQ(0, tip.fixedY);
    EXPECT_EQ(0, tip.suppressed);
    EXPECT_FALSE(tip.closeRequest);
}

TEST_F(Tips, ClearMayBeCalledInAnyStateAndAgain) {
    tip.Clear(); // idle
    tip.SetText(TextOfArea());
    tip.Clear(); // armed
    EXPECT_EQ(0, tipList.Count);
    tip.Clear();
    tip.SetText(TextOfArea());
    LetItShow();
    ASSERT_TRUE(IsUp());
    tip.Clear(); // up
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_EQ(0, tipList.Count);
    world.Turn();
    EXPECT_EQ(0u, tip.delayStart);
}

TEST_F(Tips, ClearLeavesTheOthersUp) {
    NToolTip other;
    tip.SetText(TextOfArea());
    other.SetText(TextOfArea());
    LetItShow();
    tip.Clear();
    EXPECT_FALSE(IsUp());
    EXPECT_TRUE(other.IsVisible());
    ASSERT_EQ(1, tipList.Count);
    EXPECT_EQ(&other, tipList.At(0));
}

TEST_F(Tips, SetTakesTheFormerTipDownFirst) {
    tip.SetText(TextOfArea());
    LetItShow();
    const HWND former = tip.hwnd;
    NToolTipText record = TextOfArea();
    record.text = L"Something else";
    tip.SetText(record);
    EXPECT_FALSE(IsWindow(former));
    EXPECT_EQ(1, tipList.Count);
    EXPECT_EQ(0, tip.suppressed);
    ASSERT_EQ(1, tip.scene.texts.Count());
    EXPECT_EQ(L"Something else", tip.scene.texts[0]->text);
    LetItShow();
    EXPECT_TRUE(IsUp());
}

TEST_F(Tips, ItsDestructorTakesItDown) {
    HWND window = nullptr;
    {
        NToolTip shown;
        shown.SetText(TextOfArea());
        LetItShow();
        window = shown.hwnd;
        ASSERT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(0, tipList.Count);
}
