// Messages that a refresh lets in while it waits for the tips' lock.
#include "resources/resource_ids.h"
#include "tests/audiopage/held_tips.h"
#include "tests/audiopage/page_fixture.h"
#include "tests/audiopage/watched_calls.h"
#include "tests/shell/counted_allocations.h"
#include "tests/support/clipboard_turn.h"
#include "toolkit/nclipboard.h"
#include "toolkit/tip_thread.h"

#include <new>
#include <vector>

namespace {
constexpr wchar_t Fitting[] = L"Fits";
constexpr wchar_t Cut[] = L"One\rTwo"; // its row has a tip

class RefreshReentry : public PageTest {
protected:
    void OpenSingleView(std::initializer_list<const wchar_t*> titles) {
        for (const wchar_t* title : titles)
            AddFile(title);
        window_.OpenAndRead();
        Page().cmdViewSingle.OnClick(false);
    }
    static void PostKeyClick(const NButton& button) {
        PostMessageW(button.window, WM_KEYDOWN, VK_SPACE, 0);
        PostMessageW(button.window, WM_KEYUP, VK_SPACE, 0);
    }
    // Those of the page and of its buttons, and none that is gone.
    void ExpectTipsSet(int ofRows) {
        EXPECT_EQ(Page().RowTips.Count(), ofRows);
        EXPECT_EQ(tipList.Count, ofRows + TipsOfButtons);
    }
    void ExpectEmpty() {
        EXPECT_EQ(tipList.Count, 0);
        EXPECT_EQ(Page().PageRowsAll.Count(), 0);
        EXPECT_EQ(Page().PageRowsOne.Count(), 0);
        EXPECT_EQ(Page().AlbumArtList.Count(), 0);
        EXPECT_EQ(Page().RowTips.Count(), 0);
        EXPECT_EQ(Page().Buttons.buttons.Count, 0);
        EXPECT_EQ(Page().Count, 0);
    }
    static constexpr int TipsOfButtons = 2;

    NString TextOfTip(int index) {
        NDrawList& scene = Page().RowTips[index]->scene;
        return static_cast<NDrawList::Text*>(scene.texts.Items.At(0))->text;
    }
};
} // namespace

TEST_F(RefreshReentry, AClickWhileTipsGoIsShownInTheEnd) {
    OpenSingleView({Cut, L"Left\rout", L"Last\rof all"});
    ASSERT_EQ(Page().RowTips.Count(), 1);
    HeldTips held;
    PostKeyClick(Page().cmdSkipNext);
    held.PostEnd();
    Page().cmdSkipNext.OnClick(false);
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(Page().FileIndex, 2);
    EXPECT_EQ(TitleOfOne(), L"Last\rof all");
    ExpectTipsSet(1);
    EXPECT_EQ(TextOfTip(0), L"Last\rof all");
    EXPECT_FALSE(window_.IsEnabled(Page().cmdSkipNext));
}

TEST_F(RefreshReentry, AClickWhileATipIsSetIsShownInTheEnd) {
    OpenSingleView({Fitting, Cut, Fitting});
    ASSERT_EQ(Page().RowTips.Count(), 0);
    HeldTips held;
    PostKeyClick(Page().cmdSkipNext);
    held.PostEnd();
    Page().cmdSkipNext.OnClick(false);
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(Page().FileIndex, 2);
    EXPECT_EQ(TitleOfOne(), Fitting);
    ExpectTipsSet(0);
}

TEST_F(RefreshReentry, TheLastOfSeveralViewsStays) {
    OpenSingleView({Cut, Fitting});
    HeldTips held;
    PostKeyClick(Page().cmdViewSingle);
    PostKeyClick(Page().cmdViewSingle);
    PostKeyClick(Page().cmdViewSingle);
    held.PostEnd();
    Page().RefreshView();
    ASSERT_TRUE(held.HasEnded());
    EXPECT_FALSE(Page().cmdViewSingle.latched);
    ExpectTipsSet(0);
    EXPECT_FALSE(window_.IsEnabled(Page().cmdSkipNext));
}

// Its button is disabled only when the page comes to show the last file.
TEST_F(RefreshReentry, ClicksThatComeTooLateStayAtTheLastFile) {
    OpenSingleView({Cut, Fitting, Cut});
    HeldTips held;
    for (int click = 0; click < 3; ++click)
        PostKeyClick(Page().cmdSkipNext);
    held.PostEnd();
    Page().cmdSkipNext.OnClick(false);
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(Page().FileIndex, 2);
    EXPECT_EQ(Page().PageRowsOne.Count(), 23);
    EXPECT_FALSE(window_.IsEnabled(Page().cmdSkipNext));
}

TEST_F(RefreshReentry, ClicksThatComeTooLateStayAtTheFirstFile) {
    OpenSingleView({Fitting, Cut, Cut});
    Page().cmdSkipLast.OnClick(false);
    HeldTips held;
    for (int click = 0; click < 3; ++click)
        PostKeyClick(Page().cmdSkipPrev);
    held.PostEnd();
    Page().cmdSkipPrev.OnClick(false);
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(Page().FileIndex, 0);
    EXPECT_EQ(TitleOfOne(), Fitting);
    EXPECT_FALSE(window_.IsEnabled(Page().cmdSkipPrev));
}

TEST_F(RefreshReentry, ClosedWhileTipsGoThePageIsEmpty) {
    OpenSingleView({Cut, Cut});
    ASSERT_EQ(Page().RowTips.Count(), 1);
    HeldTips held;
    held.PostEnd([this] { window_.Close(); });
    Page().cmdSkipNext.OnClick(false);
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(window_.Dialog(), nullptr);
    ExpectEmpty();
}

TEST_F(RefreshReentry, ClosedWhileATipIsSetThePageIsEmpty) {
    OpenSingleView({Fitting, Cut});
    ASSERT_EQ(Page().RowTips.Count(), 0);
    HeldTips held;
    held.PostEnd([this] { window_.Close(); });
    Page().cmdSkipNext.OnClick(false);
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(window_.Dialog(), nullptr);
    ExpectEmpty();
}

TEST_F(RefreshReentry, AClickWhileThePageClosesFillsNothing) {
    OpenSingleView({Cut, Cut, Fitting});
    ASSERT_EQ(Page().RowTips.Count(), 1);
    HeldTips held;
    PostKeyClick(Page().cmdSkipNext);
    held.PostEnd();
    window_.Close();
    ASSERT_TRUE(held.HasEnded());
    ExpectEmpty();
}

TEST_F(RefreshReentry, ACopyWhileThePageClosesLeavesTheClipboardAlone) {
    const ClipboardTurn turn;
    NClipboard clipboard;
    ASSERT_TRUE(clipboard.Open(nullptr));
    clipboard.SetTextW(L"kept");
    clipboard.Close();
    OpenSingleView({Cut, Cut});
    ASSERT_EQ(Page().RowTips.Count(), 1);
    HeldTips held;
    PostMessageW(window_.Dialog(), WM_COMMAND, IDC_COPY_ROWS, 0);
    held.PostEnd();
    window_.Close();
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(ClipboardTurn::WideText(), L"kept");
    ExpectEmpty();
}

TEST_F(RefreshReentry, AClosedPageReadsNothingUntilItIsOpenedAgain) {
    OpenSingleView({Cut, Fitting});
    window_.Close();
    Page().RefreshView();
    ExpectEmpty();
    Page().cmdViewSingle.Unlatch();
    OpenSingleView({Fitting, Cut});
    EXPECT_EQ(TitleOfOne(), Fitting);
    EXPECT_TRUE(window_.IsEnabled(Page().cmdSkipNext));
}

TEST_F(RefreshReentry, ARefreshThatThrowsPutsTheArrowBackAndLeavesTheNextItsTurn) {
    const std::vector<HCURSOR> waitAndArrow = {LoadCursorW(nullptr, IDC_WAIT),
                                               LoadCursorW(nullptr, IDC_ARROW)};
    OpenSingleView({Fitting, Cut});
    TakeShownCursors();
    const auto refreshWithoutMemory = [this] {
        const FailingAllocations all(0);
        Page().RefreshView();
    };
    EXPECT_THROW(refreshWithoutMemory(), std::bad_alloc);
    EXPECT_EQ(TakeShownCursors(), waitAndArrow);
    Page().cmdSkipNext.OnClick(false);
    EXPECT_EQ(TitleOfOne(), Cut);
    EXPECT_EQ(Page().RowTips.Count(), 1);
}
