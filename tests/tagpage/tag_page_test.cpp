// The life of the page, its reading and its messages.
#include "foundation/module_instance.h"
#include "foundation/unique_handle.h"
#include "resources/resource_ids.h"
#include "tagpage/combined_set.h"
#include "tagpage/page_procedures.h"
#include "tests/audiopage/watched_calls.h"
#include "tests/support/picture_compare.h"
#include "tests/tagpage/tag_page_fixture.h"
#include "toolkit/device_contexts.h"

#include <thread>

namespace {
class TagPage : public TagPageTest {
protected:
    Texts SetNames() {
        Texts names;
        for (int index = 0; index < Page().TagSets.Count(); ++index)
            names.push_back(Page().TagSets[index]->Name.Text);
        return names;
    }
    INT_PTR Procedure(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return PageDlgProc(window_.Dialog(), message, wParam, lParam);
    }
    LONG_PTR MessageResult() { return GetWindowLongPtrW(window_.Dialog(), DWLP_MSGRESULT); }
    void ForgetMessageResult() { SetWindowLongPtrW(window_.Dialog(), DWLP_MSGRESULT, 4711); }
    // Opens the page and stops its reading at the first file.
    void OpenHeld() {
        tags_.Hold(TagRequestKind::Read, A);
        window_.Open();
        ASSERT_TRUE(tags_.WaitForRequests(1));
    }
    void LetGo() { tags_.Release(TagRequestKind::Read, A); }
    void Redraw() {
        RedrawWindow(window_.Dialog(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    }
};

// The least rectangle around all dark pixels.
RECT DarkPart(const Picture& picture) {
    RECT part = {picture.width, picture.height, -1, -1};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (picture.At(x, y) != 0)
                continue;
            part.left = std::min<LONG>(part.left, x);
            part.top = std::min<LONG>(part.top, y);
            part.right = std::max<LONG>(part.right, x);
            part.bottom = std::max<LONG>(part.bottom, y);
        }
    }
    return part;
}
} // namespace

// Reading.

TEST_F(TagPage, ReadsEachFileOnceInItsOrder) {
    AddFile(A, {{L"Title", L"One"}});
    AddFile(B, {{L"Title", L"Two"}});
    window_.OpenAndRead();
    EXPECT_EQ(SetNames(), (Texts{L"<combined>", A, B}));
    EXPECT_EQ(SetTexts(A), Texts{L"Title=One"});
    EXPECT_EQ(SetTexts(B), Texts{L"Title=Two"});
    EXPECT_EQ(SetTexts(CombinedName), Texts{L"Title=<different>"});
    ASSERT_EQ(tags_.Requests().size(), 2u);
    EXPECT_EQ(tags_.Requests()[0].path, A);
    EXPECT_EQ(tags_.Requests()[1].path, B);
}

TEST_F(TagPage, NothingIsReadBeforeThereIsAWindow) {
    AddFile(A);
    EXPECT_EQ(tags_.Requests().size(), 0u);
    EXPECT_EQ(Page().ReadThread.handle, nullptr);
    EXPECT_EQ(Page().ControlsReady, 0);
}

TEST_F(TagPage, AFileWithoutAReplyHasAnEmptySet) {
    AddFile(A, {{L"Title", L"One"}});
    tags_.SetNoReply(A);
    window_.OpenAndRead();
    EXPECT_EQ(SetNames(), (Texts{L"<combined>", A}));
    EXPECT_EQ(SetTexts(A), Texts());
}

TEST_F(TagPage, TakesRatingsInStepsAndPicturesAloneOfTheSpecialElements) {
    clTagRecord tag;
    FillTag(tag, {{L"RATING", L"7"}, {L"_cdtoc", L"1"}, {L"rating", L"8"}, {L"_riff_INAM", L"2"}});
    tag.AddData(L"_albumart_1", "x", 1);
    AddFile(A, tag);
    window_.OpenAndRead();
    EXPECT_EQ(SetTexts(A), (Texts{L"RATING=3.5", L"rating=4", L"_albumart_1=:x"}));
}

TEST_F(TagPage, RatingsAreComparedInSteps) {
    AddFile(A, {{L"rating", L"7"}});
    AddFile(B, {{L"rating", L"7"}});
    window_.OpenAndRead();
    EXPECT_EQ(SetTexts(CombinedName), Texts{L"rating=3.5"});
}

TEST_F(TagPage, RatingsThatDifferReadDifferent) {
    AddFile(A, {{L"rating", L"7"}});
    AddFile(B, {{L"rating", L"8"}});
    window_.OpenAndRead();
    EXPECT_EQ(SetTexts(CombinedName), Texts{L"rating=<different>"});
}

TEST_F(TagPage, OfATruncatedReplyTakesWhatItHolds) {
    clTagRecord tag;
    FillTag(tag, {{L"Title", L"One"}, {L"Album", L"Two"}});
    AddFile(A, tag);
    tags_.SetReply(
        A, ScriptedTags::TruncatedReply(tag, static_cast<size_t>(4 + tag.GetElementSize(0))));
    window_.OpenAndRead();
    EXPECT_EQ(SetTexts(A).at(0), L"Title=One");
}

// Two sets would write over each other's edits.
TEST_F(TagPage, APathThatIsThereTwiceHasOneSet) {
    AddFile(A, {{L"Title", L"One"}});
    AddFile(A, {{L"Title", L"One"}});
    window_.OpenAndRead();
    EXPECT_EQ(SetNames(), (Texts{L"<combined>", A}));
    EXPECT_EQ(SetTexts(CombinedName), Texts{L"Title=One"});
    ShowSingle();
    window_.Type(L"Title", L"New");
    window_.Apply();
    EXPECT_EQ(tags_.ValueOf(A, L"Title"), L"New");
    EXPECT_EQ(tags_.Count(TagRequestKind::Set), 1);
}

TEST_F(TagPage, PathsInOtherCapitalsHaveSetsOfTheirOwn) {
    AddFile(L"C:\\A.mp3");
    AddFile(A);
    window_.OpenAndRead();
    EXPECT_EQ(SetNames(), (Texts{L"<combined>", L"C:\\A.mp3", A}));
}

TEST_F(TagPage, ReadsAtALowPriorityWithALookEach250Milliseconds) {
    AddFile(A);
    OpenHeld();
    EXPECT_EQ(GetThreadPriority(Page().ReadThread.handle), THREAD_PRIORITY_BELOW_NORMAL);
    const std::map<UINT_PTR, UINT> timers = TimersSetOn(window_.Dialog());
    EXPECT_EQ(timers, (std::map<UINT_PTR, UINT>{{1, 250}, {7787, 50}}));
    LetGo();
}

TEST_F(TagPage, ATickBeforeTheEndOfTheReadingDoesNothing) {
    AddFile(A);
    OpenHeld();
    window_.Tick();
    EXPECT_EQ(Page().ControlsReady, 0);
    EXPECT_EQ(List().listBox, nullptr);
    EXPECT_FALSE(IsEnabled(Page().cmdAdd));
    LetGo();
    window_.WaitForReading();
    EXPECT_EQ(Page().ControlsReady, 0);
    window_.Tick();
    EXPECT_EQ(Page().ControlsReady, 1);
    EXPECT_TRUE(IsEnabled(Page().cmdAdd));
}

TEST_F(TagPage, ATickOfAnyTimerShowsTheRowsButThatOfTheButtons) {
    AddFile(A);
    window_.Open();
    window_.WaitForReading();
    window_.Send(WM_TIMER, 7787);
    EXPECT_EQ(Page().ControlsReady, 0);
    window_.Send(WM_TIMER, 42);
    EXPECT_EQ(Page().ControlsReady, 1);
}

// A tip of its buttons may have waited, and dispatched one.
TEST_F(TagPage, ATickBeforeTheReadingHasBegunDoesNothing) {
    AddFile(A, {{L"Title", L"One"}});
    int32_t handled = 0;
    Page().OnPageMessage(nullptr, WM_TIMER, 1, 0, &handled);
    EXPECT_EQ(Page().ControlsReady, 0);
    EXPECT_EQ(Page().TagSets.Count(), 0);
    window_.OpenAndRead();
    EXPECT_EQ(window_.Row(L"Title").value, L"One");
}

TEST_F(TagPage, LaterTicksDoNothing) {
    AddFile(A);
    window_.OpenAndRead();
    List().Clear();
    window_.Tick();
    EXPECT_EQ(List().rows.Count(), 0);
}

TEST_F(TagPage, TheTickWipesTheWords) {
    AddFile(A);
    window_.Open();
    window_.WaitForReading();
    ValidateRect(window_.Dialog(), nullptr);
    window_.Tick();
    RECT client = {};
    RECT update = {};
    GetClientRect(window_.Dialog(), &client);
    GetUpdateRect(window_.Dialog(), &update, FALSE);
    EXPECT_TRUE(EqualRect(&update, &client));
}

TEST_F(TagPage, ShowsWordsWhileItReads) {
    AddFile(A);
    OpenHeld();
    TakeDrawnTexts();
    Redraw();
    EXPECT_EQ(TakeDrawnTexts(), Texts{L"<reading files>"});
    RECT client = {};
    GetClientRect(window_.Dialog(), &client);
    NCanvas copy;
    copy.Resize(client.right, client.bottom);
    NWindowDC screen(window_.Dialog());
    BitBlt(copy.dc, 0, 0, client.right, client.bottom, screen.dc, 0, 0, SRCCOPY);
    const int buttons = window_.PlaceOf(Page().cmdAdd.window).top;
    const RECT words = DarkPart(ReadPicture(copy.dc, client.right, buttons));
    EXPECT_NEAR(words.left + words.right, client.right, 6);
    EXPECT_GE(words.top, window_.Y(100));
    EXPECT_LE(words.bottom, window_.Y(100) + 25);
    EXPECT_GE(words.bottom - words.top, 14);
    LetGo();
    window_.WaitForReading();
    Redraw();
    EXPECT_EQ(TakeDrawnTexts(), Texts());
}

TEST_F(TagPage, OpensAtTheFirstFile) {
    AddFile(A);
    AddFile(B);
    Page().CurrentFile = 1;
    window_.OpenAndRead();
    EXPECT_EQ(Page().CurrentFile, 0);
}

// The sets.

TEST_F(TagPage, ASetThatIsMissingIsMade) {
    AddFile(A);
    AddFile(B);
    window_.OpenAndRead();
    Page().TagSets.Clear();
    EXPECT_EQ(&Page().CurrentTags(), &Page().CombinedSet().Tags);
    Page().cmdViewSingle.Latch();
    clTagRecord& tags = Page().CurrentTags();
    EXPECT_EQ(SetNames(), (Texts{L"<combined>", A}));
    EXPECT_EQ(&Page().CurrentSet().Tags, &tags);
    EXPECT_EQ(Page().CurrentSet().Name, A);
    EXPECT_EQ(Page().CurrentSet().DeleteAll, 0);
    EXPECT_EQ(&Page().CurrentTags(), &tags);
}

// Messages.

TEST_F(TagPage, ItsGroundIsTheWindowColourInASheet) {
    AddFile(A);
    window_.Open();
    ForgetMessageResult();
    const auto brush = reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
    EXPECT_EQ(Procedure(WM_CTLCOLORDLG), brush);
    EXPECT_EQ(Procedure(WM_CTLCOLORSTATIC), brush);
    EXPECT_EQ(Procedure(WM_CTLCOLOREDIT), 0);
    EXPECT_EQ(MessageResult(), 4711);
}

TEST_F(TagPage, ItsGroundIsThatOfADialogWithoutASheet) {
    AddFile(A);
    window_.Open(true);
    const auto brush = reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_BTNFACE));
    EXPECT_EQ(Procedure(WM_CTLCOLORDLG), brush);
    EXPECT_EQ(Procedure(WM_CTLCOLORSTATIC), brush);
}

TEST_F(TagPage, MayBeLeftAtAnyTimeAndKeepsItsRows) {
    AddFile(A);
    window_.OpenAndRead();
    window_.Type(L"Title", L"One");
    ForgetMessageResult();
    EXPECT_NE(window_.Notify(static_cast<UINT>(PSN_KILLACTIVE)), 4711);
    EXPECT_EQ(MessageResult(), 0);
    NMHDR header = {};
    header.code = static_cast<UINT>(PSN_KILLACTIVE);
    EXPECT_EQ(Procedure(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header)), 1);
    EXPECT_EQ(tags_.Count(TagRequestKind::Set), 0);
    List().EndEdit(true);
    EXPECT_EQ(window_.Row(L"Title").value, L"One");
}

TEST_F(TagPage, LeavesOtherMessagesToTheDialog) {
    AddFile(A);
    window_.OpenAndRead();
    NMHDR header = {};
    header.code = static_cast<UINT>(PSN_APPLY);
    EXPECT_EQ(Procedure(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header)), 0);
    EXPECT_EQ(Procedure(WM_COMMAND, IDOK), 0);
    EXPECT_EQ(Procedure(WM_PAINT), 0);
    EXPECT_EQ(Procedure(WM_SIZE), 0);
    EXPECT_EQ(Procedure(WM_TIMER, 1), 0);
    ForgetMessageResult();
    EXPECT_EQ(Procedure(WM_NULL), 0);
    EXPECT_EQ(MessageResult(), 4711);
}

TEST_F(TagPage, MessagesOfItsControlsLeaveTheirResult) {
    AddFile(A);
    window_.OpenAndRead();
    DRAWITEMSTRUCT button = {};
    button.hwndItem = Page().cmdAdd.window;
    ForgetMessageResult();
    EXPECT_NE(Procedure(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&button)), 0);
    EXPECT_EQ(MessageResult(), 1);
    MEASUREITEMSTRUCT row = {};
    row.CtlType = ODT_LISTBOX;
    row.CtlID = static_cast<UINT>(List().controlId);
    ForgetMessageResult();
    EXPECT_NE(Procedure(WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&row)), 0);
    EXPECT_EQ(MessageResult(), 1);
    EXPECT_EQ(row.itemHeight, 21u);
}

TEST_F(TagPage, AWindowWithoutAPageAnswersNothing) {
    const HWND sheet = window_.Sheet();
    const LONG_PTR bound = SetWindowLongPtrW(sheet, GWLP_USERDATA, 0);
    for (UINT message : {WM_CTLCOLORDLG, WM_CTLCOLORSTATIC, WM_PAINT, WM_NOTIFY})
        EXPECT_EQ(PageDlgProc(sheet, message, 0, 0), 0);
    SetWindowLongPtrW(sheet, GWLP_USERDATA, bound);
}

// A commit that comes early.

TEST_F(TagPage, ACommitBeforeTheRowsAreThereStoresNothingAndTheReadingGoesOn) {
    AddFile(A, {{L"Title", L"One"}});
    OpenHeld();
    window_.Apply();
    window_.Send(WM_COMMAND, IDOK);
    EXPECT_EQ(tags_.Requests().size(), 1u);
    LetGo();
    window_.WaitForReading();
    window_.Apply();
    EXPECT_EQ(tags_.Requests().size(), 1u);
    window_.Tick();
    EXPECT_EQ(window_.Row(L"Title").value, L"One");
    window_.Apply();
    EXPECT_EQ(tags_.Requests().size(), 2u);
}

// The end.

TEST_F(TagPage, ItsWindowsEndWaitsForTheFileUnderWayAlone) {
    AddFile(A, {{L"Title", L"One"}});
    AddFile(B);
    OpenHeld();
    const HANDLE stop = Page().ReadThread.stopEvent->handle;
    std::thread sibling([&] {
        EXPECT_EQ(WaitForSingleObject(stop, 60000), WAIT_OBJECT_0);
        LetGo();
    });
    window_.Close();
    sibling.join();
    EXPECT_EQ(WaitForSingleObject(Page().ReadThread.handle, 0), WAIT_OBJECT_0);
    EXPECT_EQ(tags_.Requests().size(), 1u);
}

TEST_F(TagPage, BehindItsWindowsEndItIsEmpty) {
    AddFile(A, {{L"Title", L"One"}});
    AddFile(B);
    window_.OpenAndRead();
    window_.Close();
    EXPECT_EQ(Page().Files.Count, 0);
    EXPECT_EQ(Page().TagSets.Count(), 0);
    EXPECT_EQ(Page().ButtonGroup.buttons.Count, 0);
    EXPECT_EQ(Page().ButtonGroup.timerId, 0u);
    EXPECT_EQ(Page().cmdAdd.window, nullptr);
    EXPECT_EQ(List().rows.Count(), 0);
    EXPECT_EQ(List().listBox, nullptr);
    EXPECT_EQ(Page().ControlsReady, 1);
}

TEST_F(TagPage, BehindItsWindowsEndNothingIsDone) {
    AddFile(A, {{L"Title", L"One"}});
    AddFile(B);
    window_.OpenAndRead();
    ShowSingle();
    window_.Close();
    tags_.ForgetRequests();
    window_.TakeChanges();
    Page().Commit();
    Page().StoreEdits();
    Page().RefreshView();
    Page().cmdSkipNext.OnClick(false);
    Page().cmdViewSingle.OnClick(false);
    Page().cmdAdd.OnClick(false);
    Page().cmdRemove.OnClick(false);
    Page().cmdClear.OnClick(false);
    Page().OnSelChange();
    Page().OnRowEdited(0);
    clIDTagPage::OnRowValueChanged(Page().ValueList);
    EXPECT_EQ(Page().TagSets.Count(), 0);
    EXPECT_EQ(tags_.Requests().size(), 0u);
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(TagPage, ItsWindowsEndWithAnEditUnderWayIsQuiet) {
    AddFile(A);
    window_.OpenAndRead();
    Page().cmdAdd.OnClick(false);
    window_.TypeInEditor(L"Mood");
    window_.Close();
    EXPECT_EQ(window_.TakeChanges(), 0);
    EXPECT_EQ(List().rows.Count(), 0);
}

// The members' order.

TEST_F(TagPage, HasItsMembersInOrder) {
    const clIDTagPage& page = Page();
    const void* members[] = {
        &page.Files,       &page.ReadThread,   &page.TagSets,     &page.ControlsReady,
        &page.CurrentFile, &page.PageWindow,   &page.BackColour,  &page.ButtonGroup,
        &page.ValueList,   &page.cmdSkipFirst, &page.cmdSkipPrev, &page.cmdViewSingle,
        &page.cmdSkipNext, &page.cmdSkipLast,  &page.cmdAdd,      &page.cmdRemove,
        &page.cmdClear,    &page.cmdOptMenu,
    };
    for (size_t index = 1; index < std::size(members); ++index)
        EXPECT_LT(members[index - 1], members[index]) << index;
    EXPECT_EQ(sizeof(page.ControlsReady), 1u);
    const clTagSet set{};
    EXPECT_LT(static_cast<const void*>(&set.Name), &set.Tags);
    EXPECT_LT(static_cast<const void*>(&set.Tags), &set.DeleteAll);
    EXPECT_LT(static_cast<const void*>(&set.DeleteAll), &set.DeleteNames);
}
