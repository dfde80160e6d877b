// A page that its host releases, with and without a call on it under way.
#include "foundation/unique_handle.h"
#include "tagpage/page_procedures.h"
#include "tests/audiopage/held_tips.h"
#include "tests/support/message_box_driver.h"
#include "tests/tagpage/tag_page_fixture.h"

namespace {
class TagPageRelease : public TagPageTest {
protected:
    void Open() {
        AddFile(A, {{L"Title", L"One"}, {L"Album", L"Two"}});
        window_.OpenAndRead();
        thread_ = Page().ReadThread.handle;
        ASSERT_TRUE(PageExists());
    }
    void ReleaseAtNextChange() {
        window_.atChange = [this] { Release(); };
    }
    void Release() {
        window_.Release();
        existedAfterRelease_ = PageExists();
        wasReleased_ = true;
    }
    void ExpectGoneOnlyAfterTheCall() const {
        EXPECT_TRUE(wasReleased_);
        EXPECT_TRUE(existedAfterRelease_);
        EXPECT_FALSE(PageExists());
    }
    // Makes the controls of a page whose host comes to its end meanwhile, since
    // the tip of a button has to wait.
    template <typename End>
    void MakeControlsDuring(End end) {
        AddFile(A);
        Page().ReadThread.Start([](NEvent&, void*) {}, nullptr);
        thread_ = Page().ReadThread.handle;
        WaitForSingleObject(thread_, INFINITE);
        Page().PageWindow = owner_.Get();
        HeldTips held;
        held.PostEnd([this, &end] {
            int32_t handled = 0;
            Page().OnPageMessage(owner_.Get(), WM_DESTROY, 0, 0, &handled);
            end();
        });
        Page().CreateControls(false);
        EXPECT_TRUE(held.HasEnded());
        EXPECT_EQ(GetWindow(owner_.Get(), GW_CHILD), nullptr);
        EXPECT_EQ(tipList.Count, 0);
        EXPECT_FALSE(KillTimer(owner_.Get(), 1));
        EXPECT_EQ(tags_.Requests().size(), 0u);
    }
    // The thread's handle goes with the page object, and not before.
    bool PageExists() const {
        DWORD flags = 0;
        return GetHandleInformation(thread_, &flags) != FALSE;
    }
    void Select(const wchar_t* name) { List().Select(window_.RowOf(name)); }

private:
    struct PopupTraits {
        using Handle = HWND;
        static Handle None() { return nullptr; }
        static void Free(Handle handle) { DestroyWindow(handle); }
    };

    UniqueHandle<PopupTraits> owner_{CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400, 400,
                                                     nullptr, nullptr, nullptr, nullptr)};
    HANDLE thread_ = nullptr;
    bool wasReleased_ = false;
    bool existedAfterRelease_ = false;
};
} // namespace

TEST_F(TagPageRelease, WithoutACallFreesThePageAtOnce) {
    Open();
    window_.Release();
    EXPECT_FALSE(PageExists());
}

TEST_F(TagPageRelease, ComesToAPageThatWasNeverShown) {
    PROPSHEETPAGEW description = {};
    auto* page = new clIDTagPage;
    page->Files.Add(A);
    page->ReadThread.Start([](NEvent&, void*) {}, nullptr);
    const HANDLE thread = page->ReadThread.handle;
    DWORD flags = 0;
    ASSERT_TRUE(GetHandleInformation(thread, &flags));
    description.lParam = reinterpret_cast<LPARAM>(page);
    EXPECT_EQ(PageRelease(nullptr, PSPCB_RELEASE, &description), 1u);
    EXPECT_FALSE(GetHandleInformation(thread, &flags));
}

TEST_F(TagPageRelease, IsAskedForByItsOwnCodeAlone) {
    Open();
    PROPSHEETPAGEW description = {};
    description.lParam = reinterpret_cast<LPARAM>(&Page());
    const LONG_PTR page = GetWindowLongPtrW(window_.Dialog(), GWLP_USERDATA);
    EXPECT_EQ(page, description.lParam);
    for (UINT code : {UINT{PSPCB_ADDREF}, UINT{PSPCB_CREATE}})
        EXPECT_EQ(PageRelease(window_.Dialog(), code, &description), 1u);
    EXPECT_TRUE(PageExists());
    EXPECT_EQ(GetWindowLongPtrW(window_.Dialog(), GWLP_USERDATA), page);
}

TEST_F(TagPageRelease, TakesThePageFromItsWindow) {
    Open();
    PROPSHEETPAGEW description = {};
    EXPECT_EQ(PageRelease(window_.Dialog(), PSPCB_RELEASE, &description), 1u);
    EXPECT_EQ(GetWindowLongPtrW(window_.Dialog(), GWLP_USERDATA), 0);
    EXPECT_TRUE(PageExists());
    // The window's end has to come to the page.
    SetWindowLongPtrW(window_.Dialog(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&Page()));
}

TEST_F(TagPageRelease, WhileAValueIsTypedWaitsForTheMessage) {
    Open();
    Select(L"Title");
    const HWND editor = List().control.editor;
    ReleaseAtNextChange();
    SendMessageW(editor, WM_CHAR, L'x', 0);
    ExpectGoneOnlyAfterTheCall();
}

TEST_F(TagPageRelease, WhileANameIsLeftWaitsForTheMessage) {
    Open();
    Page().cmdAdd.OnClick(false);
    window_.TypeInEditor(L"Mood");
    const HWND edit = GetWindow(List().control.editor, GW_CHILD);
    ReleaseAtNextChange();
    SendMessageW(edit, WM_KEYUP, VK_RETURN, 0);
    ExpectGoneOnlyAfterTheCall();
}

TEST_F(TagPageRelease, WhileANameIsLeftForAnotherWindowWaitsForTheMessage) {
    Open();
    Page().cmdAdd.OnClick(false);
    window_.TypeInEditor(L"Mood");
    ReleaseAtNextChange();
    SetFocus(window_.Sheet());
    ExpectGoneOnlyAfterTheCall();
}

TEST_F(TagPageRelease, InAClickOfTheMouseWaitsForTheMessage) {
    Open();
    Select(L"Title");
    ReleaseAtNextChange();
    TestCursor::MoveTo(Page().cmdRemove.window, 3, 3);
    window_.Send(WM_LBUTTONDOWN);
    window_.Send(WM_LBUTTONUP);
    ExpectGoneOnlyAfterTheCall();
}

TEST_F(TagPageRelease, InAClickOfAKeyWaitsForTheMessage) {
    Open();
    Select(L"Title");
    ReleaseAtNextChange();
    const HWND button = Page().cmdClear.window;
    SendMessageW(button, WM_KEYDOWN, VK_SPACE, 0);
    SendMessageW(button, WM_KEYUP, VK_SPACE, 0);
    ExpectGoneOnlyAfterTheCall();
}

TEST_F(TagPageRelease, WhileACommitEndsTheEditOfANameWaitsForTheCommit) {
    Open();
    Page().cmdAdd.OnClick(false);
    window_.TypeInEditor(L"Mood");
    ReleaseAtNextChange();
    window_.Apply();
    ExpectGoneOnlyAfterTheCall();
    EXPECT_EQ(tags_.Requests().size(), 1u);
}

TEST_F(TagPageRelease, AWindowThatGoesWhileAllIsClearedLeavesAnEmptyPage) {
    Open();
    window_.atChange = [this] { window_.Close(); };
    Page().cmdClear.OnClick(false);
    EXPECT_EQ(Page().TagSets.Count(), 0);
    EXPECT_EQ(List().rows.Count(), 0);
}

TEST_F(TagPageRelease, AWindowThatGoesAtTheEndOfANamesEditIsNotCleared) {
    Open();
    ShowSingle();
    Page().cmdAdd.OnClick(false);
    window_.TypeInEditor(L"Mood");
    window_.atChange = [this] { window_.Close(); };
    Page().cmdClear.OnClick(false);
    EXPECT_EQ(Page().TagSets.Count(), 0);
    EXPECT_EQ(List().rows.Count(), 0);
}

TEST_F(TagPageRelease, WhileTheCommitsBoxIsUpWaitsForTheCommit) {
    Open();
    tags_.RefuseToStart(TagRequestKind::Set, A);
    window_.Type(L"Title", L"New");
    MessageBoxDriver driver;
    driver.beforeAnswer = [this](size_t) { Release(); };
    window_.Apply();
    EXPECT_EQ(driver.Boxes().size(), 1u);
    ExpectGoneOnlyAfterTheCall();
}

TEST_F(TagPageRelease, WhileTheButtonsAreMadeWaitsForTheStart) {
    MakeControlsDuring([this] { Release(); });
    ExpectGoneOnlyAfterTheCall();
}

TEST_F(TagPageRelease, AWindowThatGoesWhileTheButtonsAreMadeGetsNone) {
    MakeControlsDuring([] {});
    EXPECT_EQ(Page().ButtonGroup.buttons.Count, 0);
    EXPECT_EQ(Page().ButtonGroup.timerId, 0u);
    EXPECT_TRUE(PageExists());
}
