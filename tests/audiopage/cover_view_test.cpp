#include "audiopage/cover_view.h"
#include "foundation/module_instance.h"
#include "foundation/unique_handle.h"
#include "resources/resource_ids.h"
#include "tests/audiopage/painted_canvas.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nicon.h"

namespace {
// Without a dialog, dialog units are pixels.
constexpr int CoverX = 7;
constexpr int CoverY = 7;
constexpr int CaseWidth = 99;
constexpr int ArrowsY = 8;
constexpr int ClickRight = 8 + CaseWidth;

struct WindowTraits {
    using Handle = HWND;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyWindow(handle); }
};

// Covers to step through, in a window that is no dialog.
class CoverView : public testing::Test {
protected:
    void AddCovers(int count) {
        for (int number = 0; number < count; ++number)
            ASSERT_TRUE(covers_.Add()->LoadResource(IDB_ART_FRAME, NModuleInstance()));
    }
    Picture Painted(int32_t shown) {
        Paper paper(150, 120);
        PaintCover(covers_, shown, paper.Dc(), nullptr);
        return paper.Seen();
    }
    Picture Expected(bool leftArrow, bool rightArrow) {
        Paper paper(150, 120);
        covers_[0]->Blit(paper.Dc(), CoverX, CoverY);
        if (leftArrow)
            DrawIcon(paper, IDI_ARROW_LEFT, CoverX + CaseWidth - 20);
        if (rightArrow)
            DrawIcon(paper, IDI_ARROW_RIGHT, CoverX + CaseWidth - 10);
        return paper.Seen();
    }
    static void DrawIcon(const Paper& paper, int id, int x) {
        NIcon icon;
        EXPECT_TRUE(icon.Load(id, 16, 16, NModuleInstance()));
        icon.Draw(paper.Dc(), x, ArrowsY);
    }
    // The cover shown after a click, and whether the window waits for paint.
    int32_t Click(int32_t shown, int x, int y) {
        ValidateRect(window_.Get(), nullptr);
        ClickCover(covers_, shown, {x, y}, window_.Get());
        return shown;
    }
    bool WaitsForPaint() { return GetUpdateRect(window_.Get(), nullptr, FALSE) != FALSE; }

    NKeyedList<NCanvas> covers_;
    UniqueHandle<WindowTraits> window_{CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"",
                                                       WS_POPUP | WS_VISIBLE, 0, 0, 200, 200,
                                                       nullptr, nullptr, nullptr, nullptr)};
};

struct ClickCase {
    const char* what;
    int x, y;
    int32_t from, to; // of three covers
};
constexpr int Middle = ArrowsY + 5;
constexpr ClickCase Clicks[] = {
    {"left arrow's left edge", ClickRight - 20, Middle, 1, 0},
    {"before it", ClickRight - 21, Middle, 1, 1},
    {"left arrow", ClickRight - 15, Middle, 1, 0},
    {"left arrow on the first", ClickRight - 15, Middle, 0, 0},
    {"one pixel before the shared edge", ClickRight - 11, Middle, 1, 0},
    {"right arrow", ClickRight - 5, Middle, 1, 2},
    {"right arrow on the last", ClickRight - 5, Middle, 2, 2},
    {"right arrow's right edge", ClickRight, Middle, 1, 2},
    {"behind it", ClickRight + 1, Middle, 1, 1},
    {"upper edge", ClickRight - 5, ArrowsY, 1, 2},
    {"above it", ClickRight - 5, ArrowsY - 1, 1, 1},
    {"lower edge", ClickRight - 5, ArrowsY + 10, 1, 2},
    {"below it", ClickRight - 5, ArrowsY + 11, 1, 1},
    {"left of the window", -5, Middle, 1, 1},
    // Back and on again, or on alone: wanted.
    {"shared edge", ClickRight - 10, Middle, 1, 1},
    {"shared edge on the first", ClickRight - 10, Middle, 0, 1},
    {"shared edge on the last", ClickRight - 10, Middle, 2, 2},
};
} // namespace

TEST_F(CoverView, OneCoverHasNoArrows) {
    AddCovers(1);
    EXPECT_TRUE(SamePictures(Painted(0), Expected(false, false)));
}

TEST_F(CoverView, TheFirstLeadsOnAndTheLastLeadsBack) {
    AddCovers(3);
    EXPECT_TRUE(SamePictures(Painted(0), Expected(false, true)));
    EXPECT_TRUE(SamePictures(Painted(1), Expected(true, true)));
    EXPECT_TRUE(SamePictures(Painted(2), Expected(true, false)));
}

TEST_F(CoverView, WithoutACoverOfThatNumberNothingIsPainted) {
    const Picture white = Paper(150, 120).Seen();
    EXPECT_TRUE(SamePictures(Painted(0), white));
    AddCovers(2);
    EXPECT_TRUE(SamePictures(Painted(2), white));
}

TEST_F(CoverView, ClicksMeetArrowsWithinTheirEdges) {
    AddCovers(3);
    for (const ClickCase& click : Clicks) {
        SCOPED_TRACE(click.what);
        EXPECT_EQ(Click(click.from, click.x, click.y), click.to);
    }
}

TEST_F(CoverView, AClickOnAnArrowHasTheWindowPaintedAnew) {
    AddCovers(3);
    Click(1, ClickRight - 15, Middle);
    EXPECT_TRUE(WaitsForPaint());
    Click(1, ClickRight - 5, Middle);
    EXPECT_TRUE(WaitsForPaint());
    Click(1, ClickRight - 10, Middle); // the shared edge
    EXPECT_TRUE(WaitsForPaint());
    Click(1, ClickRight + 5, Middle);
    EXPECT_FALSE(WaitsForPaint());
    Click(0, ClickRight - 15, Middle);
    EXPECT_FALSE(WaitsForPaint());
}

TEST_F(CoverView, WithoutCoversAClickDoesNothing) {
    EXPECT_EQ(Click(0, ClickRight - 5, Middle), 0);
    EXPECT_EQ(Click(3, ClickRight - 15, Middle), 3);
    EXPECT_FALSE(WaitsForPaint());
}

// The icons overlap, as they are 16 wide and 10 apart; what they show doesn't.
TEST_F(CoverView, NeitherArrowCoversTheOther) {
    AddCovers(1);
    Paper left(60, 20), right(60, 20), both(60, 20);
    DrawIcon(left, IDI_ARROW_LEFT, 10);
    DrawIcon(right, IDI_ARROW_RIGHT, 20);
    DrawIcon(both, IDI_ARROW_LEFT, 10);
    DrawIcon(both, IDI_ARROW_RIGHT, 20);
    const Picture onlyLeft = left.Seen(), onlyRight = right.Seen(), together = both.Seen();
    for (int y = 0; y < together.height; ++y) {
        for (int x = 0; x < together.width; ++x) {
            const bool isOfLeft = onlyLeft.At(x, y) != 0xFFFFFF;
            EXPECT_EQ(together.At(x, y), isOfLeft ? onlyLeft.At(x, y) : onlyRight.At(x, y));
        }
    }
}
