// A page that its sheet releases while a call on it is under way.
#include "resources/resource_ids.h"
#include "tests/audiopage/held_tips.h"
#include "tests/audiopage/page_fixture.h"
#include "tests/support/clipboard_turn.h"

namespace {
constexpr wchar_t Fitting[] = L"Fits";
constexpr wchar_t Cut[] = L"One\rTwo"; // its row has a tip

struct PopupTraits {
    using Handle = HWND;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyWindow(handle); }
};

class PageRelease : public PageTest {
protected:
    void Open(std::initializer_list<const wchar_t*> titles) {
        for (const wchar_t* title : titles)
            AddFile(title);
        window_.OpenAndRead();
    }
    void OpenSingleView(std::initializer_list<const wchar_t*> titles) {
        Open(titles);
        Page().cmdViewSingle.OnClick(false);
    }
    // `call` has to dispatch the messages of this thread, one of which then
    // closes and releases the page.
    template <typename Call>
    void ExpectGoneOnlyAfter(Call call) {
        stars_ = Page().StarBitmap.dc;
        ASSERT_TRUE(PageExists());
        HeldTips held;
        held.PostEnd([this] {
            // Wine doesn't end a menu with its owner, and looks for an end only
            // when a message comes.
            EndMenu();
            PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
            window_.Release();
            existedAfterRelease_ = PageExists();
        });
        call();
        ASSERT_TRUE(held.HasEnded());
        EXPECT_TRUE(existedAfterRelease_);
        EXPECT_FALSE(PageExists());
    }
    static UniqueHandle<PopupTraits> MakeOwner() {
        return UniqueHandle<PopupTraits>(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400,
                                                         400, nullptr, nullptr, nullptr, nullptr));
    }
    void PutCursorOn(const NButton& button) {
        const RECT place = window_.PlaceOf(button.window);
        TestCursor::MoveTo(window_.Dialog(), place.left + 3, place.top + 3);
    }

private:
    // The picture goes with the page object, and not before.
    bool PageExists() const { return GetObjectType(stars_) == OBJ_MEMDC; }

    HDC stars_ = nullptr;
    bool existedAfterRelease_ = false;
};
} // namespace

TEST_F(PageRelease, WithoutACallThePageGoesAtOnce) {
    Open({Cut});
    const HDC stars = Page().StarBitmap.dc;
    ASSERT_EQ(GetObjectType(stars), DWORD{OBJ_MEMDC});
    window_.Release();
    EXPECT_EQ(GetObjectType(stars), 0u);
    EXPECT_EQ(tipList.Count, 0);
}

TEST_F(PageRelease, WhileTipsGoWaitsForTheRefresh) {
    OpenSingleView({Cut, Cut});
    ASSERT_EQ(Page().RowTips.Count(), 1);
    ExpectGoneOnlyAfter([this] { Page().RefreshView(); });
    EXPECT_EQ(tipList.Count, 0);
}

TEST_F(PageRelease, WhileATipIsSetWaitsForTheRefresh) {
    OpenSingleView({Fitting, Cut});
    ASSERT_EQ(Page().RowTips.Count(), 0);
    Page().FileIndex = 1;
    ExpectGoneOnlyAfter([this] { Page().RefreshView(); });
    EXPECT_EQ(tipList.Count, 0);
}

TEST_F(PageRelease, InTheFirstRefreshWaitsForTheTick) {
    AddFile(Cut);
    window_.Open();
    ASSERT_EQ(WaitForSingleObject(Page().Reader.handle, INFINITE), WAIT_OBJECT_0);
    ExpectGoneOnlyAfter([this] { Page().OnTick(); });
    EXPECT_EQ(tipList.Count, 0);
}

TEST_F(PageRelease, InTheClickOfTheMouseWaitsForTheMessage) {
    OpenSingleView({Cut, Cut});
    PutCursorOn(Page().cmdSkipNext);
    window_.Send(WM_LBUTTONDOWN);
    ASSERT_TRUE(Page().cmdSkipNext.IsDown());
    ExpectGoneOnlyAfter([this] { window_.Send(WM_LBUTTONUP); });
}

TEST_F(PageRelease, InTheClickOfAKeyWaitsForTheMessage) {
    OpenSingleView({Cut, Cut});
    const HWND button = Page().cmdSkipNext.window;
    SendMessageW(button, WM_KEYDOWN, VK_SPACE, 0);
    ASSERT_TRUE(Page().cmdSkipNext.keyDown);
    ExpectGoneOnlyAfter([button] { SendMessageW(button, WM_KEYUP, VK_SPACE, 0); });
}

TEST_F(PageRelease, InTheMenuOfTheMouseWaitsForTheMessage) {
    Open({Cut, Cut});
    PutCursorOn(Page().cmdOptMenu);
    ExpectGoneOnlyAfter([this] { window_.Send(WM_LBUTTONDOWN); });
}

TEST_F(PageRelease, InTheMenuOfAKeyWaitsForTheMessage) {
    Open({Cut, Cut});
    const HWND button = Page().cmdOptMenu.window;
    ExpectGoneOnlyAfter([button] { SendMessageW(button, WM_KEYDOWN, VK_SPACE, 0); });
}

TEST_F(PageRelease, WhileTheCopyIsToldOfWaitsForTheCommand) {
    const ClipboardTurn turn;
    Open({Cut, Cut});
    ExpectGoneOnlyAfter([this] { window_.Send(WM_COMMAND, IDC_COPY_ROWS); });
    EXPECT_EQ(tipList.Count, 0);
}

TEST_F(PageRelease, WhileTheButtonsAreMadeWaitsForTheStart) {
    window_.Open();
    window_.Close();
    const UniqueHandle<PopupTraits> owner = MakeOwner();
    Page().Hwnd = owner.Get();
    ExpectGoneOnlyAfter([this] { Page().OnInit(); });
    EXPECT_EQ(tipList.Count, 0);
}

TEST_F(PageRelease, APageThatIsClosedWhileItsButtonsAreMadeStartsNothing) {
    AddFiles(2);
    window_.Open();
    window_.Close();
    Page().Reader.Close();
    UniqueHandle<PopupTraits> owner = MakeOwner();
    Page().Hwnd = owner.Get();
    HeldTips held;
    held.PostEnd([this, &owner] {
        int32_t handled = 0;
        Page().OnMessage(owner.Get(), WM_DESTROY, 0, 0, &handled);
        owner.Reset();
    });
    Page().OnInit();
    ASSERT_TRUE(held.HasEnded());
    EXPECT_EQ(Page().Reader.handle, nullptr);
    EXPECT_EQ(Page().Buttons.buttons.Count, 0);
    EXPECT_EQ(Page().Buttons.timerId, 0u);
    EXPECT_EQ(Page().PageRowsAll.Count(), 0);
    EXPECT_EQ(tipList.Count, 0);
}
