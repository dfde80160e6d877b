#include "foundation/com_owners.h"
#include "shell/property_sheet.h"
#include "shell/shell_object.h"
#include "tests/shell/counted_allocations.h"
#include "tests/shell/page_hand_over.h"
#include "tests/support/nstring_printer.h"
#include "toolkit/nwindow.h"

#include <cstddef>
#include <functional>
#include <iterator>
#include <utility>

namespace {
// Does something at the next message that is dispatched.
class AtNextMessage : public NWindow {
public:
    explicit AtNextMessage(std::function<void()> act) : act_(std::move(act)) {
        Create(L"", {0, 0, 10, 10}, WS_POPUP);
        PostMessageW(hwnd, Act, 0, 0);
    }
    ~AtNextMessage() override { Destroy(); }

    LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
        if (message == Act)
            act_();
        return 0;
    }

private:
    static constexpr UINT Act = WM_APP + 7;

    std::function<void()> act_;
};

// A sheet that its host destroys while the page's menu is open.
class SheetOfAnOpenMenu : public PageHandOver {
protected:
    using OpenMenu = void (*)(const clAudioPropPage& page);

    void ExpectThePageFreedBehind(OpenMenu openMenu) {
        Select({L"C:\\song.none"});
        std::ptrdiff_t before = 0;
        // In the first round the platform makes what it makes once.
        for (int round = 0; round < 2; ++round) {
            SheetCalls::StartAnew();
            before = LiveAllocations();
            DestroyDuring(openMenu);
            SheetCalls::StartAnew();
        }
        EXPECT_EQ(LiveAllocations(), before);
    }

private:
    void DestroyDuring(OpenMenu openMenu) {
        PageTaker taker;
        Offer(taker);
        Sheet sheet(taker.GiveUp());
        clAudioPropPage& page = PageMade();
        page.cmdOptMenu.Enable();
        // The picture goes with the page object, and not before.
        const HDC stars = page.StarBitmap.dc;
        DWORD picture = 0;
        AtNextMessage destroyed([&] {
            // Wine doesn't end a menu with its owner, and looks for an end only
            // when a message comes.
            EndMenu();
            PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
            sheet.Close();
            picture = GetObjectType(stars);
        });
        openMenu(page);
        EXPECT_EQ(picture, DWORD{OBJ_MEMDC});
        EXPECT_EQ(GetObjectType(stars), 0u);
    }
};
} // namespace

TEST_F(PageHandOver, DescribesThePagesToThePlatform) {
    Select({L"C:\\song.mp3"});
    PageTaker taker;
    Offer(taker);
    struct Expected {
        int dialog;
        int icon;
        const wchar_t* title;
        DLGPROC procedure;
        LPFNPSPCALLBACKW callback;
        UINT* references;
    };
    const Expected expected[] = {
        {206, 213, L"Audio Properties", AudioPageProc, AudioPageCallback, &audioPageReferences},
        {205, 212, L"ID-Tag", PageDlgProc, PageRelease, &idTagPageReferences},
    };
    ASSERT_EQ(SheetCalls::Made().size(), std::size(expected));
    for (size_t index = 0; index < std::size(expected); ++index) {
        const PROPSHEETPAGEW& page = SheetCalls::Made()[index];
        EXPECT_EQ(page.dwSize, 88u);
        EXPECT_EQ(page.dwFlags, 204u);
        EXPECT_EQ(page.hInstance, module_.Handle());
        EXPECT_EQ(page.pszTemplate, MAKEINTRESOURCEW(expected[index].dialog));
        EXPECT_EQ(page.pszIcon, MAKEINTRESOURCEW(expected[index].icon));
        EXPECT_STREQ(page.pszTitle, expected[index].title);
        EXPECT_EQ(page.pfnDlgProc, expected[index].procedure);
        EXPECT_EQ(page.pfnCallback, expected[index].callback);
        EXPECT_EQ(page.pcRefParent, expected[index].references);
        EXPECT_EQ(page.pszHeaderTitle, nullptr);
        EXPECT_EQ(page.pszHeaderSubTitle, nullptr);
    }
    EXPECT_EQ(taker.calls, 2);
}

TEST_F(PageHandOver, AnEmptySelectionOffersNothing) {
    PageTaker taker;
    Offer(taker);
    EXPECT_EQ(taker.calls, 0);
    EXPECT_TRUE(SheetCalls::Made().empty());
}

TEST_F(PageHandOver, EachPageHasAllPathsSortedWithoutRegardToCase) {
    selection_.Add(L"C:\\b.mp3", 1);
    selection_.Add(L"C:\\C.mp3", 2);
    selection_.Add(L"C:\\a.mp3", 3);
    selection_.Add(L"C:\\b.mp3", 4);
    PageTaker taker;
    Offer(taker);
    const NStringList* lists[] = {&PageMade(), &TagPageMade().Files};
    for (const NStringList* files : lists) {
        ASSERT_EQ(files->Count, 4);
        EXPECT_EQ(*(*files)[0], L"C:\\a.mp3");
        EXPECT_EQ(*(*files)[1], L"C:\\b.mp3");
        EXPECT_EQ(*(*files)[2], L"C:\\b.mp3");
        EXPECT_EQ(*(*files)[3], L"C:\\C.mp3");
        EXPECT_EQ((*files)[0]->Value, 3);
        EXPECT_EQ((*files)[1]->Value + (*files)[2]->Value, 5);
        EXPECT_EQ((*files)[3]->Value, 2);
    }
    // The shell's own list keeps its order.
    EXPECT_EQ(*selection_[0], L"C:\\b.mp3");
}

TEST_F(PageHandOver, FilesThatDifferInCaseAloneStandNextToEachOther) {
    Select({L"C:\\Song.mp3", L"C:\\z.mp3", L"C:\\a.mp3", L"C:\\song.mp3"});
    PageTaker taker;
    Offer(taker);
    const NStringList* lists[] = {&PageMade(), &TagPageMade().Files};
    for (const NStringList* files : lists) {
        ASSERT_EQ(files->Count, 4);
        EXPECT_EQ((*files)[1]->Compare(L"C:\\song.mp3", 0, true), 0);
        EXPECT_EQ((*files)[2]->Compare(L"C:\\song.mp3", 0, true), 0);
        EXPECT_NE(*(*files)[1], *(*files)[2]);
    }
}

TEST_F(PageHandOver, ThePagesOutliveTheShellsList) {
    Select({L"C:\\song.mp3"});
    PageTaker taker;
    Offer(taker);
    selection_.Clear();
    EXPECT_EQ(*PageMade()[0], L"C:\\song.mp3");
    EXPECT_EQ(*TagPageMade().Files[0], L"C:\\song.mp3");
}

TEST_F(PageHandOver, BothPagesAreMadeBeforeTheFirstIsHandedOver) {
    Select({L"C:\\song.mp3"});
    PageTaker taker;
    taker.atTake = [this] { selection_.Clear(); };
    Offer(taker);
    ASSERT_EQ(taker.calls, 2);
    ASSERT_EQ(TagPageMade().Files.Count, 1);
    EXPECT_EQ(*TagPageMade().Files[0], L"C:\\song.mp3");
}

TEST_F(PageHandOver, PagesThatAreRefusedAreFreed) {
    Select({L"C:\\song.mp3"});
    PageTaker taker;
    taker.refuses = true;
    AddPropertyPages(selection_, PageTaker::Take, Parameter);
    SheetCalls::StartAnew();
    const std::ptrdiff_t before = LiveAllocations();
    AddPropertyPages(selection_, PageTaker::Take, Parameter);
    EXPECT_EQ(SheetCalls::Destroyed(), 2);
    SheetCalls::StartAnew();
    EXPECT_EQ(LiveAllocations(), before);
}

TEST_F(PageHandOver, WhenOnePageIsRefusedTheOtherIsOfferedAllTheSame) {
    Select({L"C:\\song.mp3"});
    for (int refused : {1, 2}) {
        SheetCalls::StartAnew();
        PageTaker taker;
        taker.refusedCall = refused;
        Offer(taker);
        EXPECT_EQ(taker.calls, 2);
        EXPECT_EQ(taker.pages.size(), 1u);
        EXPECT_EQ(SheetCalls::Destroyed(), 1);
    }
}

// Nobody will ever free it: wanted.
TEST_F(PageHandOver, PagesThatThePlatformCanNotMakeStay) {
    Select({L"C:\\song.mp3"});
    SheetCalls::MakeNoMore();
    PageTaker taker;
    Offer(taker);
    EXPECT_EQ(taker.calls, 0);
    EXPECT_EQ(SheetCalls::Destroyed(), 0);
    ASSERT_EQ(SheetCalls::Made().size(), 2u);
    EXPECT_EQ(*PageMade()[0], L"C:\\song.mp3");
    EXPECT_EQ(*TagPageMade().Files[0], L"C:\\song.mp3");
    delete &PageMade();
    delete &TagPageMade();
}

TEST_F(PageHandOver, TheShellObjectOffersItsSelection) {
    ComPtr<ComObject<CtNWIShell>> shell;
    shell.Reset(new ComObject<CtNWIShell>());
    shell->AddRef();
    PageTaker taker;
    EXPECT_EQ(shell->AddPages(PageTaker::Take, Parameter), S_OK);
    EXPECT_EQ(taker.calls, 0);
    shell->m_Selection.Add(L"C:\\song.mp3");
    EXPECT_EQ(shell->AddPages(PageTaker::Take, Parameter), S_OK);
    EXPECT_EQ(taker.calls, 2);
    EXPECT_EQ(*PageMade()[0], L"C:\\song.mp3");
    EXPECT_EQ(*TagPageMade().Files[0], L"C:\\song.mp3");
    SheetCalls::StartAnew();
    SheetCalls::MakeNoMore();
    EXPECT_EQ(shell->AddPages(PageTaker::Take, Parameter), S_OK);
    EXPECT_EQ(taker.calls, 2);
    delete &PageMade();
    delete &TagPageMade();
}

// The two procedures.

TEST_F(PageHandOver, TheCallbackFreesThePageAtItsReleaseAlone) {
    PROPSHEETPAGEW page = {};
    const std::ptrdiff_t before = LiveAllocations();
    auto* object = new clAudioPropPage;
    page.lParam = reinterpret_cast<LPARAM>(object);
    const std::ptrdiff_t with = LiveAllocations();
    for (UINT message : {UINT{PSPCB_ADDREF}, UINT{PSPCB_CREATE}}) {
        EXPECT_EQ(AudioPageCallback(nullptr, message, &page), 1u);
        EXPECT_EQ(LiveAllocations(), with);
    }
    EXPECT_EQ(AudioPageCallback(nullptr, PSPCB_RELEASE, &page), 1u);
    EXPECT_EQ(LiveAllocations(), before);
    page.lParam = 0;
    EXPECT_EQ(AudioPageCallback(nullptr, PSPCB_RELEASE, &page), 1u);
}

TEST_F(PageHandOver, TheCallbackTakesThePageFromItsWindow) {
    const UniqueHandle<SheetWindowTraits> window(
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    SetWindowLongPtrW(window.Get(), GWLP_USERDATA, 4711);
    PROPSHEETPAGEW page = {};
    AudioPageCallback(window.Get(), PSPCB_CREATE, &page);
    EXPECT_EQ(GetWindowLongPtrW(window.Get(), GWLP_USERDATA), 4711);
    AudioPageCallback(window.Get(), PSPCB_RELEASE, &page);
    EXPECT_EQ(GetWindowLongPtrW(window.Get(), GWLP_USERDATA), 0);
}

TEST_F(PageHandOver, ThePagesGroundIsTheWindowColour) {
    const UniqueHandle<SheetWindowTraits> window(
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    const auto brush = reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
    EXPECT_EQ(AudioPageProc(window.Get(), WM_CTLCOLORDLG, 0, 0), brush);
    EXPECT_EQ(AudioPageProc(window.Get(), WM_CTLCOLORSTATIC, 0, 0), brush);
    EXPECT_EQ(AudioPageProc(window.Get(), WM_CTLCOLOREDIT, 0, 0), 0);
    EXPECT_EQ(AudioPageProc(window.Get(), WM_PAINT, 0, 0), 0);
}

TEST_F(PageHandOver, AMessageThatThePageHandledLeavesItsResult) {
    Select({L"C:\\song.none"});
    PageTaker taker;
    Offer(taker);
    Sheet sheet(taker.GiveUp());
    ASSERT_EQ(PageMade().Hwnd, sheet.Page());
    EXPECT_EQ(GetWindowLongPtrW(sheet.Page(), GWLP_USERDATA),
              reinterpret_cast<LONG_PTR>(&PageMade()));
    DRAWITEMSTRUCT item = {};
    item.hwndItem = PageMade().cmdOptMenu.window;
    SetWindowLongPtrW(sheet.Page(), DWLP_MSGRESULT, 4711);
    EXPECT_EQ(AudioPageProc(sheet.Page(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 1);
    EXPECT_EQ(GetWindowLongPtrW(sheet.Page(), DWLP_MSGRESULT), 1);
    SetWindowLongPtrW(sheet.Page(), DWLP_MSGRESULT, 4711);
    EXPECT_EQ(AudioPageProc(sheet.Page(), WM_PAINT, 0, 0), 1);
    EXPECT_EQ(GetWindowLongPtrW(sheet.Page(), DWLP_MSGRESULT), 0);
    SetWindowLongPtrW(sheet.Page(), DWLP_MSGRESULT, 4711);
    EXPECT_EQ(AudioPageProc(sheet.Page(), WM_LBUTTONUP, 0, 0), 0);
    EXPECT_EQ(GetWindowLongPtrW(sheet.Page(), DWLP_MSGRESULT), 4711);
}

TEST_F(PageHandOver, NoExceptionLeavesTheDialogProcedure) {
    SelectSample();
    PageTaker taker;
    Offer(taker);
    Sheet sheet(taker.GiveUp());
    clAudioPropPage& page = PageMade();
    ASSERT_EQ(WaitForSingleObject(page.Reader.handle, LongestMs), WAIT_OBJECT_0);
    {
        const FailingAllocations none(0);
        EXPECT_EQ(AudioPageProc(page.Hwnd, WM_TIMER, 1, 0), 0);
    }
    EXPECT_EQ(page.PageRowsOne.Count(), 0);
    page.RefreshView();
    EXPECT_EQ(page.PageRowsOne.Count(), 23);
}

TEST_F(PageHandOver, NoExceptionLeavesTheDialogProcedureOfTheTagPage) {
    SelectSample();
    PageTaker taker;
    Offer(taker);
    Sheet sheet(taker.GiveUp());
    sheet.ShowPage(1);
    clIDTagPage& page = TagPageMade();
    ASSERT_EQ(WaitForSingleObject(page.ReadThread.handle, LongestMs), WAIT_OBJECT_0);
    SendMessageW(page.PageWindow, WM_TIMER, 1, 0);
    const int elements = page.CurrentTags().Count();
    {
        const FailingAllocations none(0);
        EXPECT_EQ(PageDlgProc(page.PageWindow, WM_COMMAND, IDOK, 0), 0);
    }
    page.StoreEdits();
    EXPECT_EQ(page.CurrentTags().Count(), elements);
}

// In a sheet of the platform.

TEST_F(PageHandOver, ShowsWhatTheModulesDecoderSays) {
    SelectSample();
    PageTaker taker;
    Offer(taker);
    Sheet sheet(taker.GiveUp());
    clAudioPropPage& page = PageMade();
    ASSERT_EQ(WaitForSingleObject(page.Reader.handle, LongestMs), WAIT_OBJECT_0);
    SendMessageW(page.Hwnd, WM_TIMER, 1, 0);
    ASSERT_EQ(page.PageRowsOne.Count(), 23);
    EXPECT_EQ(page.AlbumArtList.Count(), 1);
    EXPECT_TRUE(sheet.Pump());
    EXPECT_TRUE(IsWindowVisible(page.Hwnd));
    EXPECT_TRUE(IsWindowEnabled(page.cmdOptMenu.window));
}

TEST_F(PageHandOver, ItsOwnTimerShowsThePage) {
    Select({L"C:\\song.none"});
    PageTaker taker;
    Offer(taker);
    Sheet sheet(taker.GiveUp());
    clAudioPropPage& page = PageMade();
    while (!page.ReadingDone) {
        ASSERT_EQ(MsgWaitForMultipleObjects(0, nullptr, FALSE, LongestMs, QS_ALLINPUT),
                  WAIT_OBJECT_0);
        ASSERT_TRUE(sheet.Pump());
    }
    EXPECT_TRUE(IsWindowEnabled(page.cmdOptMenu.window));
}

TEST_F(PageHandOver, PagesThatWereNeverShownAreFreed) {
    Select({L"C:\\song.mp3"});
    std::ptrdiff_t before = 0;
    // In the first round the platform makes what it makes once.
    for (int round = 0; round < 2; ++round) {
        SheetCalls::StartAnew();
        before = LiveAllocations();
        PageTaker taker;
        Offer(taker);
        const clAudioPropPage& page = PageMade();
        const clIDTagPage& tagPage = TagPageMade();
        const std::vector<HPROPSHEETPAGE> pages = taker.GiveUp();
        Sheet sheet({PlainPage(), pages.at(0), pages.at(1)});
        EXPECT_EQ(page.Hwnd, nullptr);
        EXPECT_EQ(page.Reader.handle, nullptr);
        EXPECT_EQ(tagPage.PageWindow, nullptr);
        EXPECT_EQ(tagPage.ReadThread.handle, nullptr);
        sheet.Close();
        SheetCalls::StartAnew();
    }
    EXPECT_EQ(LiveAllocations(), before);
}

TEST_F(PageHandOver, TheTagPageShowsWhatTheTagProgramSays) {
    SelectSample();
    PageTaker taker;
    Offer(taker);
    Sheet sheet(taker.GiveUp());
    clIDTagPage& page = TagPageMade();
    EXPECT_EQ(page.PageWindow, nullptr);
    sheet.ShowPage(1);
    ASSERT_EQ(page.PageWindow, sheet.Page());
    EXPECT_EQ(page.BackColour, COLOR_WINDOW);
    EXPECT_EQ(GetWindowLongPtrW(sheet.Page(), GWLP_USERDATA), reinterpret_cast<LONG_PTR>(&page));
    while (!page.ControlsReady) {
        ASSERT_EQ(MsgWaitForMultipleObjects(0, nullptr, FALSE, LongestMs, QS_ALLINPUT),
                  WAIT_OBJECT_0);
        ASSERT_TRUE(sheet.Pump());
    }
    EXPECT_EQ(page.ValueList.rows[0]->kind, Title);
    EXPECT_TRUE(IsWindowVisible(page.ValueList.listBox));
    EXPECT_FALSE(page.CurrentTags().Find(L"Title")->Value.IsEmpty());
}

TEST_F(SheetOfAnOpenMenu, ThatTheMouseOpenedLeavesThePageUntilThen) {
    ExpectThePageFreedBehind([](const clAudioPropPage& page) {
        constexpr int withinTheButton = 3;
        TestCursor::MoveTo(page.cmdOptMenu.window, withinTheButton, withinTheButton);
        SendMessageW(page.Hwnd, WM_LBUTTONDOWN, 0, 0);
    });
}

TEST_F(SheetOfAnOpenMenu, ThatAKeyOpenedLeavesThePageUntilThen) {
    ExpectThePageFreedBehind([](const clAudioPropPage& page) {
        SendMessageW(page.cmdOptMenu.window, WM_KEYDOWN, VK_SPACE, 0);
    });
}
