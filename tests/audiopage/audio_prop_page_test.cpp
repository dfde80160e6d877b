#include "audiopage/audio_prop_page.h"
#include "audiopage/cover_view.h"
#include "audiopage/rows_clipboard.h"
#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "tests/audiopage/page_fixture.h"
#include "tests/audiopage/painted_canvas.h"
#include "tests/audiopage/screen_resolution.h"
#include "tests/audiopage/watched_calls.h"
#include "tests/support/clipboard_turn.h"
#include "toolkit/device_contexts.h"
#include "toolkit/message_pump.h"
#include "toolkit/nfont.h"
#include "toolkit/nicon.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {
constexpr DWORD LongestMs = 60000;
constexpr UINT_PTR TickTimer = 1;

class AudioPage : public PageTest {
protected:
    // First, Previous, View Single, Next, Last: "x" for each that is enabled.
    std::string Enabled() {
        std::string states;
        for (const NButton* button : {static_cast<NButton*>(&Page().cmdSkipFirst),
                                      static_cast<NButton*>(&Page().cmdSkipPrev),
                                      static_cast<NButton*>(&Page().cmdViewSingle),
                                      static_cast<NButton*>(&Page().cmdSkipNext),
                                      static_cast<NButton*>(&Page().cmdSkipLast)})
            states += window_.IsEnabled(*button) ? 'x' : '-';
        return states;
    }
    // As a mouse does it.
    void Click(const NButton& button) {
        const RECT place = window_.PlaceOf(button.window);
        TestCursor::MoveTo(window_.Dialog(), place.left + 5, place.top + 5);
        window_.Send(WM_LBUTTONDOWN);
        window_.Send(WM_LBUTTONUP);
        TestCursor::MoveTo(FarAway, FarAway);
    }
    void ClickAt(int x, int y) { window_.Send(WM_LBUTTONUP, 0, MAKELPARAM(x, y)); }
    bool HasTimer() { return KillTimer(window_.Dialog(), TickTimer) != FALSE; }

    // What the page is to show, drawn by other means: rows, cover, and texts
    // of the bottom line.
    struct Expectation {
        NKeyedList<clPropRow>* rows = nullptr;
        bool cover = false;
        const wchar_t* viewing = nullptr;
        int textHeight = 13; // pixels
    };
    void ExpectShown(const Expectation& expected) {
        const Picture seen = WithoutButtons(window_.Seen());
        Paper paper(seen.width, seen.height);
        for (int index = 0; index < expected.rows->Count(); ++index)
            DrawRow(paper, *(*expected.rows)[index], expected.textHeight);
        if (expected.cover)
            PaintCover(Page().AlbumArtList, Page().ArtIndex, paper.Dc(), window_.Dialog());
        const auto draw = [&](int x, const wchar_t* text, COLORREF colour) {
            DrawText(paper, InPixels({x, 239}), text, expected.textHeight, colour);
        };
        if (expected.viewing)
            draw(101, expected.viewing, 0);
        draw(175, L"Tonewright", 0xFF0000);
        EXPECT_TRUE(SamePictures(seen, WithoutButtons(paper.Seen())));
    }
    // A value of one line, cut if it doesn't fit.
    void DrawRow(const Paper& paper, const clPropRow& row, int textHeight) {
        POINT labelPlace = InPixels({std::abs(row.LabelX), row.Y});
        if (row.LabelX < 0)
            labelPlace.x -= WidthOf(row.Label, textHeight);
        DrawText(paper, labelPlace, row.Label, textHeight, 0x646464);
        const POINT place = InPixels({row.ValueX, row.Y});
        const int room = InPixels({row.ValueWidth, 0}).x;
        std::wstring value = row.Value.c_str();
        value = value.substr(0, value.find(L'\r'));
        const bool isCut = !value.empty() && WidthOf(value.c_str(), textHeight) >= room;
        while (isCut && WidthOf((value + L"...").c_str(), textHeight) >= room)
            value.pop_back();
        DrawText(paper, place, value.c_str(), textHeight, 0);
        if (!isCut)
            return;
        NIcon mark;
        ASSERT_TRUE(mark.Load(224, 16, 16, NModuleInstance()));
        mark.Draw(paper.Dc(), place.x + WidthOf(value.c_str(), textHeight) + 2, place.y);
    }
    static void DrawText(const Paper& paper, POINT place, const NString& text, int height,
                         COLORREF colour) {
        NFont font;
        font.Create(paper.Dc(), nullptr, height, colour);
        font.Select(paper.Dc());
        font.DrawText(place.x, place.y, text);
    }
    static int WidthOf(const NString& text, int height) {
        const NWindowDC screen;
        NFont font;
        font.Create(screen.dc, nullptr, height, 0);
        return font.TextWidth(text);
    }
    // Dialog units of this dialog's font, as the platform converts them.
    POINT InPixels(POINT units) const {
        RECT rect = {units.x, units.y, 0, 0};
        EXPECT_TRUE(MapDialogRect(window_.Dialog(), &rect));
        return {rect.left, rect.top};
    }
    void ExpectReading(int textHeight) {
        const Picture seen = WithoutButtons(window_.Seen());
        Paper paper(seen.width, seen.height);
        {
            NFont font;
            font.Create(paper.Dc(), nullptr, textHeight, 0, 0, false, true);
            font.Select(paper.Dc());
            const int width = font.TextWidth(L"<reading files>");
            const POINT middle = InPixels({117, 100});
            font.DrawText(middle.x - width / 2, middle.y, L"<reading files>");
        }
        EXPECT_TRUE(SamePictures(seen, paper.Seen()));
    }
    Picture WithoutButtons(Picture picture) {
        for (HWND child = GetWindow(window_.Dialog(), GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            const RECT place = window_.PlaceOf(child);
            for (int y = place.top; y < place.bottom; ++y)
                for (int x = place.left; x < place.right; ++x)
                    picture.pixels[static_cast<size_t>(y * picture.width + x)] = 0xFFFFFF;
        }
        return picture;
    }
    void SetRows(NKeyedList<clPropRow>& rows, std::initializer_list<const wchar_t*> values) {
        rows.Clear();
        int number = 0;
        for (const wchar_t* value : values) {
            clPropRow& row = *rows.Add();
            row.LabelX = 7;
            row.Y = 20 + 10 * number++;
            row.ValueX = 74;
            row.ValueWidth = 100;
            row.Label = L"Label";
            row.Value = value;
        }
    }
};
} // namespace

// Life cycle.

TEST_F(AudioPage, IsMadeEmpty) {
    EXPECT_EQ(Page().Count, 0);
    EXPECT_EQ(Page().Reader.handle, nullptr);
    EXPECT_EQ(Page().PageRowsAll.Count(), 0);
    EXPECT_EQ(Page().PageRowsOne.Count(), 0);
    EXPECT_EQ(Page().AlbumArtList.Count(), 0);
    EXPECT_EQ(Page().ArtIndex, 0);
    EXPECT_EQ(Page().ReadingDone, 0);
    EXPECT_EQ(Page().FileIndex, 0);
    EXPECT_EQ(Page().Hwnd, nullptr);
    EXPECT_FALSE(Page().cmdViewSingle.latched);
}

TEST_F(AudioPage, HasItsFieldsInTheirOrder) {
    clAudioPropPage& page = Page();
    const std::vector<const void*> fields = {
        static_cast<NStringList*>(&page),
        &page.Reader,
        &page.PageRowsAll,
        &page.PageRowsOne,
        &page.AlbumArtList,
        &page.ArtIndex,
        &page.ReadingDone,
        &page.FileIndex,
        &page.Hwnd,
        &page.StarBitmap,
        &page.ClipTip,
        &page.RowTips,
        &page.Buttons,
        &page.cmdSkipFirst,
        &page.cmdSkipPrev,
        &page.cmdViewSingle,
        &page.cmdSkipNext,
        &page.cmdSkipLast,
        &page.cmdOptMenu,
    };
    EXPECT_EQ(fields.front(), &page);
    EXPECT_TRUE(std::is_sorted(fields.begin(), fields.end(), std::less<>()));
}

TEST_F(AudioPage, ReadsOnAThreadOfLowerPriorityThatNothingHolds) {
    const DecoderEvent release(L"TonewrightPageRelease");
    ScriptedAudio audio;
    release.PutInto(audio.says.eventToAwait);
    AddScripted(audio);
    window_.Open();
    EXPECT_EQ(GetThreadPriority(Page().Reader.handle), THREAD_PRIORITY_BELOW_NORMAL);
    EXPECT_FALSE(Page().Reader.suspended);
    EXPECT_EQ(Page().Reader.maxWaitMs, 0);
    DecoderEvent(L"TonewrightPageRelease").Set();
    window_.FinishReading();
}

// Covers come with the view of one file.
TEST_F(AudioPage, TheThreadReadsNoCovers) {
    AddFileWithCovers(1);
    window_.Open();
    ASSERT_EQ(WaitForSingleObject(Page().Reader.handle, LongestMs), WAIT_OBJECT_0);
    EXPECT_EQ(Page().PageRowsAll.Count(), 23);
    EXPECT_EQ(Page().AlbumArtList.Count(), 0);
    window_.Tick();
    EXPECT_EQ(Page().AlbumArtList.Count(), 1);
}

TEST_F(AudioPage, LooksEvery250MillisecondsAndNeverStops) {
    AddFiles(1);
    window_.OpenAndRead();
    EXPECT_EQ(TimersSetOn(window_.Dialog()).at(TickTimer), 250u);
    EXPECT_TRUE(HasTimer());
}

TEST_F(AudioPage, StartsAtTheFirstFileAndTheFirstCover) {
    AddFiles(2);
    Page().FileIndex = 1;
    Page().ArtIndex = 1;
    window_.OpenAndRead();
    EXPECT_EQ(Page().FileIndex, 0);
    EXPECT_EQ(Page().ArtIndex, 0);
    EXPECT_EQ(Page().StarBitmap.Width(), 32);
    EXPECT_EQ(Page().StarBitmap.Height(), 14);
}

TEST_F(AudioPage, ReadsNothingIfItHasRows) {
    AddFiles(2);
    SetRows(Page().PageRowsAll, {L"a value"});
    window_.Open();
    EXPECT_EQ(Page().Reader.handle, nullptr);
    window_.Tick();
    EXPECT_EQ(Page().ReadingDone, 1);
    EXPECT_EQ(Page().PageRowsAll.Count(), 1);
}

TEST_F(AudioPage, DoesNotReadAgainWhileItReads) {
    const DecoderEvent release(L"TonewrightPageAgain");
    ScriptedAudio audio;
    release.PutInto(audio.says.eventToAwait);
    AddScripted(audio);
    window_.Open();
    const HANDLE first = Page().Reader.handle;
    Page().OnInit();
    EXPECT_EQ(Page().Reader.handle, first);
    DecoderEvent(L"TonewrightPageAgain").Set();
    window_.FinishReading();
}

// As when the thread can't be started.
TEST_F(AudioPage, WithoutAThreadTheFirstTickTakesTheEmptyResult) {
    AddFiles(2);
    window_.Open();
    Page().Reader.Close();
    Page().PageRowsAll.Clear();
    window_.Tick();
    EXPECT_EQ(Page().ReadingDone, 1);
    EXPECT_TRUE(window_.IsEnabled(Page().cmdOptMenu));
    ExpectShown({&Page().PageRowsAll, false, L"Viewing 2 Files "});
}

TEST_F(AudioPage, BetweenTheThreadsEndAndTheTickTheRowsArePainted) {
    AddFiles(2);
    window_.Open();
    ASSERT_EQ(WaitForSingleObject(Page().Reader.handle, LongestMs), WAIT_OBJECT_0);
    ExpectShown({&Page().PageRowsAll, false, L"Viewing 2 Files "});
    EXPECT_EQ(Page().ReadingDone, 0);
}

TEST_F(AudioPage, WaitsForTheThreadTick) {
    const DecoderEvent release(L"TonewrightPageWaits");
    ScriptedAudio audio;
    release.PutInto(audio.says.eventToAwait);
    AddScripted(audio);
    window_.Open();
    window_.Seen();
    window_.Tick();
    EXPECT_EQ(Page().ReadingDone, 0);
    EXPECT_FALSE(window_.WaitsForPaint());
    EXPECT_FALSE(window_.IsEnabled(Page().cmdOptMenu));
    DecoderEvent(L"TonewrightPageWaits").Set();
    window_.FinishReading();
    EXPECT_EQ(Page().ReadingDone, 1);
    EXPECT_TRUE(window_.WaitsForPaint());
    EXPECT_TRUE(window_.IsEnabled(Page().cmdOptMenu));
}

TEST_F(AudioPage, TheOptionsMenuIsEnabledOnceEvenIfAllFilesFail) {
    ScriptedAudio audio;
    audio.says.refuses = 1;
    AddScripted(audio);
    AddScripted(audio);
    window_.Open();
    EXPECT_FALSE(window_.IsEnabled(Page().cmdOptMenu));
    window_.FinishReading();
    EXPECT_TRUE(window_.IsEnabled(Page().cmdOptMenu));
    Page().cmdOptMenu.Disable();
    window_.Tick();
    EXPECT_FALSE(window_.IsEnabled(Page().cmdOptMenu));
}

TEST_F(AudioPage, ClosedWhileItReadsItStopsBeforeTheNextFile) {
    DecoderEvent opened(L"TonewrightPageFirstOpened");
    DecoderEvent release(L"TonewrightPageFirstRelease");
    DecoderEvent second(L"TonewrightPageSecondOpened");
    ScriptedAudio audio;
    opened.PutInto(audio.says.eventToSet);
    release.PutInto(audio.says.eventToAwait);
    AddScripted(audio);
    ScriptedAudio next;
    second.PutInto(next.says.eventToSet);
    AddScripted(next);
    window_.Open();
    ASSERT_TRUE(opened.WaitFor(LongestMs));
    TakeDrawnTexts();
    window_.Seen();
    EXPECT_EQ(TakeDrawnTexts(), std::vector<std::wstring>{L"<reading files>"});
    // The decoder answers only after the page has asked its thread to stop, and
    // has had the time to go on without waiting for that.
    const HANDLE stop = Page().Reader.stopEvent->handle;
    const HWND button = Page().cmdViewSingle.window;
    bool waits = false;
    std::thread answer([stop, button, &release, &waits] {
        constexpr DWORD muchLongerThanClosingTakes = 500;
        WaitForSingleObject(stop, LongestMs);
        release.WaitFor(muchLongerThanClosingTakes);
        waits = IsWindow(button) != FALSE;
        release.Set();
    });
    window_.Close();
    answer.join();
    EXPECT_TRUE(waits);
    EXPECT_EQ(WaitForSingleObject(Page().Reader.handle, 0), WAIT_OBJECT_0);
    EXPECT_FALSE(second.IsSet());
    EXPECT_EQ(Page().PageRowsAll.Count(), 0);
    EXPECT_EQ(Page().ReadingDone, 0);
    bool quit = false;
    EXPECT_TRUE(PumpPending(&quit, nullptr));
    EXPECT_TRUE(TakeDrawnTexts().empty());
}

TEST_F(AudioPage, ClosedItIsEmpty) {
    AddFileWithCovers(2, L"One\rTwo");
    AddFile(L"Other");
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    ASSERT_NE(Page().PageRowsAll.Count(), 0);
    ASSERT_NE(Page().PageRowsOne.Count(), 0);
    ASSERT_NE(Page().AlbumArtList.Count(), 0);
    ASSERT_NE(Page().RowTips.Count(), 0);
    window_.Close();
    EXPECT_EQ(Page().PageRowsAll.Count(), 0);
    EXPECT_EQ(Page().PageRowsOne.Count(), 0);
    EXPECT_EQ(Page().AlbumArtList.Count(), 0);
    EXPECT_EQ(Page().RowTips.Count(), 0);
    EXPECT_EQ(Page().Buttons.buttons.Count, 0);
    EXPECT_EQ(Page().cmdViewSingle.window, nullptr);
    EXPECT_EQ(Page().Count, 0);
}

// Messages.

TEST_F(AudioPage, AMessageThatTheButtonsTookGoesNoFurther) {
    AddFiles(1);
    window_.Open();
    ASSERT_EQ(WaitForSingleObject(Page().Reader.handle, LongestMs), WAIT_OBJECT_0);
    int32_t handled = 0;
    Page().OnMessage(window_.Dialog(), WM_TIMER, Page().Buttons.timerId, 0, &handled);
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(Page().ReadingDone, 0);
    Page().OnMessage(window_.Dialog(), WM_TIMER, TickTimer, 0, &handled);
    EXPECT_EQ(Page().ReadingDone, 1);
}

TEST_F(AudioPage, AnswersPaintItself) {
    AddFiles(1);
    window_.OpenAndRead();
    int32_t handled = 0;
    EXPECT_EQ(Page().OnMessage(window_.Dialog(), WM_PAINT, 0, 0, &handled), 0);
    EXPECT_EQ(handled, 1);
    EXPECT_FALSE(window_.WaitsForPaint());
    for (UINT message : {WM_LBUTTONUP, WM_COMMAND, WM_SIZE, WM_CTLCOLORDLG}) {
        Page().OnMessage(window_.Dialog(), message, 0, 0, &handled);
        EXPECT_EQ(handled, 0) << message;
    }
}

TEST_F(AudioPage, CopiesTheRowsAtItsCommand) {
    const ClipboardTurn turn;
    AddFiles(2);
    window_.OpenAndRead();
    window_.Send(WM_COMMAND, MAKEWPARAM(IDC_COPY_ROWS, 0));
    EXPECT_EQ(ClipboardTurn::WideText(), RowsAsText(Page().PageRowsAll).c_str());
    EXPECT_EQ(Page().ClipTip.scene.texts[0]->text, L"Copied to Clipboard");
    Click(Page().cmdViewSingle);
    // The high word tells where a command comes from.
    window_.Send(WM_COMMAND, MAKEWPARAM(IDC_COPY_ROWS, 1));
    EXPECT_EQ(ClipboardTurn::WideText(), RowsAsText(Page().PageRowsOne).c_str());
    Page().PageRowsOne.Clear();
    window_.Send(WM_COMMAND, MAKEWPARAM(IDC_COPY_ROWS + 1, 0));
    EXPECT_NE(ClipboardTurn::WideText(), L"");
}

TEST_F(AudioPage, TheTextOfOneFileEndsWithItsTypeAndNoLineBreak) {
    AddFiles(2);
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    const NString text = RowsAsText(Page().PageRowsOne);
    const NString lastLine = text.From(text.FindLastChar(L'\n') + 1);
    NString expected(L"Type ");
    expected.Append(ValueOf(Page().PageRowsOne, L"Type"));
    EXPECT_EQ(lastLine, expected);
    EXPECT_EQ(text.Right(11), L"[.scripted]");
}

// For one file the paint takes `PageRowsOne` but the clipboard and the tips
// take `PageRowsAll`: wanted.
TEST_F(AudioPage, OfOneFileTheClipboardTakesTheRowsThatAreNotPainted) {
    const ClipboardTurn turn;
    AddFiles(1);
    window_.OpenAndRead();
    SetRows(Page().PageRowsAll, {L"of all"});
    SetRows(Page().PageRowsOne, {L"of one"});
    window_.Send(WM_COMMAND, MAKEWPARAM(IDC_COPY_ROWS, 0));
    EXPECT_EQ(ClipboardTurn::WideText(), L"Label of all");
    ExpectShown({&Page().PageRowsOne, true, nullptr});
}

TEST_F(AudioPage, OfOneFileTheTipsAreThoseOfTheRowsThatAreNotPainted) {
    AddFiles(1);
    window_.OpenAndRead();
    SetRows(Page().PageRowsAll, {L"One\rTwo"});
    Page().RefreshView();
    ASSERT_EQ(Page().RowTips.Count(), 1);
    const NDrawList& scene = Page().RowTips[0]->scene;
    ASSERT_EQ(scene.texts.Items.Count, 1);
    EXPECT_EQ(static_cast<NDrawList::Text*>(scene.texts.Items.At(0))->text, L"One\rTwo");
}

// Views.

TEST_F(AudioPage, ShowsThatItReads) {
    const DecoderEvent release(L"TonewrightPageShows");
    ScriptedAudio audio;
    release.PutInto(audio.says.eventToAwait);
    AddScripted(audio);
    window_.Open();
    ExpectReading(25);
    const ScreenResolution screen(125);
    ExpectReading(32); // 25 * 125 / 96 is 32.6
    DecoderEvent(L"TonewrightPageShows").Set();
    window_.FinishReading();
}

TEST_F(AudioPage, OfOneFileHasNoViewingTextAndNoButtonsButTheMenu) {
    AddFileWithCovers(1);
    window_.OpenAndRead();
    EXPECT_EQ(Enabled(), "-----");
    EXPECT_EQ(Page().PageRowsOne.Count(), 23);
    EXPECT_EQ(Page().AlbumArtList.Count(), 1);
    ExpectShown({&Page().PageRowsOne, true, nullptr});
}

// A blank at the end can't be seen: wanted all the same.
TEST_F(AudioPage, TellsInViewsOfAllFilesTheirNumberWithABlankBehind) {
    AddFiles(2);
    window_.OpenAndRead();
    TakeDrawnTexts();
    window_.Seen();
    std::vector<std::wstring> texts = TakeDrawnTexts();
    ASSERT_GE(texts.size(), 2u);
    EXPECT_EQ(texts[texts.size() - 2], L"Viewing 2 Files ");
    EXPECT_EQ(texts.back(), L"Tonewright");
    Click(Page().cmdViewSingle);
    TakeDrawnTexts();
    window_.Seen();
    texts = TakeDrawnTexts();
    ASSERT_GE(texts.size(), 2u);
    EXPECT_EQ(texts[texts.size() - 2], L"Viewing File 1 of 2");
}

TEST_F(AudioPage, NumbersItsFilesInPlainDecimals) {
    for (int number = 0; number < 1000; ++number)
        Page().Add(L"C:\\none.unknown");
    SetRows(Page().PageRowsAll, {L"a value"});
    window_.Open();
    window_.Tick();
    const auto viewing = [this] {
        TakeDrawnTexts();
        window_.Seen();
        const std::vector<std::wstring> texts = TakeDrawnTexts();
        return texts.size() < 2 ? std::wstring() : texts[texts.size() - 2];
    };
    EXPECT_EQ(viewing(), L"Viewing 1000 Files ");
    ExpectShown({&Page().PageRowsAll, false, L"Viewing 1000 Files "});
    Click(Page().cmdViewSingle);
    Click(Page().cmdSkipLast);
    EXPECT_EQ(viewing(), L"Viewing File 1000 of 1000");
}

// Each axis of the dialog has units of its own, and neither is a pixel.
TEST_F(AudioPage, RowsStandByTheUnitsOfTheDialog) {
    AddFiles(2);
    SetRows(Page().PageRowsAll, {L"Fits", L"Much, much, much too wide for its place"});
    Page().PageRowsAll[1]->LabelX = -70;
    window_.Open();
    const POINT units = InPixels({100, 100});
    ASSERT_NE(units.x, units.y);
    ASSERT_NE(units.x, 100);
    ASSERT_NE(units.y, 100);
    ExpectShown({&Page().PageRowsAll, false, L"Viewing 2 Files "});
}

TEST_F(AudioPage, OfTwoFilesShowsTheirSumAtFirst) {
    AddFiles(2);
    window_.OpenAndRead();
    EXPECT_EQ(Enabled(), "--x--");
    EXPECT_EQ(Page().PageRowsOne.Count(), 0);
    EXPECT_EQ(ValueOf(Page().PageRowsAll, L"Title"), L"<different>");
    ExpectShown({&Page().PageRowsAll, false, L"Viewing 2 Files "});
}

TEST_F(AudioPage, ViewSingleShowsTheFirstOfTwo) {
    AddFiles(2);
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    EXPECT_TRUE(Page().cmdViewSingle.latched);
    EXPECT_EQ(Enabled(), "--xxx");
    EXPECT_EQ(TitleOfOne(), L"Title 1");
    ExpectShown({&Page().PageRowsOne, true, L"Viewing File 1 of 2"});
}

TEST_F(AudioPage, StepsThroughTheFiles) {
    AddFiles(3);
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    Click(Page().cmdSkipNext);
    EXPECT_EQ(TitleOfOne(), L"Title 2");
    EXPECT_EQ(Enabled(), "xxxxx");
    ExpectShown({&Page().PageRowsOne, true, L"Viewing File 2 of 3"});
    Click(Page().cmdSkipLast);
    EXPECT_EQ(TitleOfOne(), L"Title 3");
    EXPECT_EQ(Enabled(), "xxx--");
    Click(Page().cmdSkipPrev);
    EXPECT_EQ(TitleOfOne(), L"Title 2");
    EXPECT_EQ(Enabled(), "xxxxx");
    Click(Page().cmdSkipNext);
    Click(Page().cmdSkipFirst);
    EXPECT_EQ(TitleOfOne(), L"Title 1");
    EXPECT_EQ(Enabled(), "--xxx");
}

TEST_F(AudioPage, KeepsItsFileWhileAllAreShown) {
    AddFiles(3);
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    Click(Page().cmdSkipLast);
    Click(Page().cmdViewSingle);
    EXPECT_FALSE(Page().cmdViewSingle.latched);
    EXPECT_EQ(Enabled(), "--x--");
    EXPECT_EQ(Page().FileIndex, 2);
    ExpectShown({&Page().PageRowsAll, false, L"Viewing 3 Files "});
    Click(Page().cmdViewSingle);
    EXPECT_EQ(TitleOfOne(), L"Title 3");
    EXPECT_EQ(Enabled(), "xxx--");
}

TEST_F(AudioPage, LeavingTheViewOfOneReadsNothing) {
    AddFiles(2);
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    SetRows(Page().PageRowsOne, {L"still there"});
    Click(Page().cmdViewSingle);
    EXPECT_EQ(Page().PageRowsOne.Count(), 1);
}

TEST_F(AudioPage, ShowsTheWaitCursorWhileItReadsOneFile) {
    const std::vector<HCURSOR> waitAndArrow = {LoadCursorW(nullptr, IDC_WAIT),
                                               LoadCursorW(nullptr, IDC_ARROW)};
    AddFiles(2);
    window_.OpenAndRead();
    TakeShownCursors();
    Click(Page().cmdViewSingle);
    EXPECT_EQ(TakeShownCursors(), waitAndArrow);
    Click(Page().cmdSkipNext);
    EXPECT_EQ(TakeShownCursors(), waitAndArrow);
    Click(Page().cmdViewSingle);
    EXPECT_TRUE(TakeShownCursors().empty());
}

TEST_F(AudioPage, EachViewIsPaintedAnewAsAWhole) {
    AddFiles(2);
    window_.OpenAndRead();
    EXPECT_TRUE(window_.WaitsForPaint());
    window_.Seen();
    Click(Page().cmdViewSingle);
    EXPECT_TRUE(window_.WaitsForPaint());
}

TEST_F(AudioPage, EachViewIsPaintedOnErasedGround) {
    AddFiles(2);
    window_.OpenAndRead();
    UpdateWindow(window_.Dialog());
    const int before = window_.TimesErased();
    UpdateWindow(window_.Dialog());
    EXPECT_EQ(window_.TimesErased(), before);
    Click(Page().cmdViewSingle);
    UpdateWindow(window_.Dialog());
    EXPECT_EQ(window_.TimesErased(), before + 1);
}

TEST_F(AudioPage, ANewViewLeavesTheOptionsMenuAsItIs) {
    AddFiles(2);
    window_.OpenAndRead();
    Page().cmdOptMenu.Disable();
    Click(Page().cmdViewSingle);
    EXPECT_FALSE(window_.IsEnabled(Page().cmdOptMenu));
    Page().cmdOptMenu.Enable();
    Click(Page().cmdViewSingle);
    EXPECT_TRUE(window_.IsEnabled(Page().cmdOptMenu));
}

TEST_F(AudioPage, TheArrowsOfTheCoverStepAndEachReadingStartsAtTheFirst) {
    AddFileWithCovers(2);
    AddFile(L"Other");
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    ASSERT_EQ(Page().AlbumArtList.Count(), 2);
    const int rightArrow = window_.X(8) + 99 - 5;
    const int leftArrow = rightArrow - 10;
    const int y = window_.Y(8) + 5;
    ExpectShown({&Page().PageRowsOne, true, L"Viewing File 1 of 2"});
    ClickAt(rightArrow, y);
    EXPECT_EQ(Page().ArtIndex, 1);
    ExpectShown({&Page().PageRowsOne, true, L"Viewing File 1 of 2"});
    ClickAt(leftArrow, y);
    EXPECT_EQ(Page().ArtIndex, 0);
    ClickAt(rightArrow, y);
    Click(Page().cmdSkipNext);
    EXPECT_EQ(Page().ArtIndex, 0);
}

// It isn't seen there: wanted.
TEST_F(AudioPage, TheArrowsAnswerInTheViewOfAllFilesToo) {
    AddFileWithCovers(2);
    AddFile(L"Other");
    window_.OpenAndRead();
    Click(Page().cmdViewSingle);
    Click(Page().cmdViewSingle);
    ClickAt(window_.X(8) + 99 - 5, window_.Y(8) + 5);
    EXPECT_EQ(Page().ArtIndex, 1);
}

TEST_F(AudioPage, AFileWithoutATagHasNoCase) {
    ScriptedAudio audio;
    audio.says.tagsAreNull = 1;
    AddScripted(audio);
    window_.OpenAndRead();
    EXPECT_EQ(Page().AlbumArtList.Count(), 0);
    ExpectShown({&Page().PageRowsOne, true, nullptr});
}

TEST_F(AudioPage, TextsGrowWithTheScreensLinesPerInch) {
    AddFiles(2);
    SetRows(Page().PageRowsAll, {L"short"});
    window_.Open();
    window_.Tick();
    const ScreenResolution screen(125);
    // 13 * 125 / 96 is 16.9.
    ExpectShown({&Page().PageRowsAll, false, L"Viewing 2 Files ", 16});
}

// Tips.

TEST_F(AudioPage, ValuesThatDoNotFitHaveTips) {
    AddFiles(2);
    SetRows(Page().PageRowsAll, {L"short", L"One\rTwo", L"44.1 KHz\r", L"",
                                 L"Much, much, much too wide for its place"});
    window_.Open();
    window_.Tick();
    ASSERT_EQ(Page().RowTips.Count(), 2);
    const NToolTip& lines = *Page().RowTips[0];
    EXPECT_EQ(lines.scene.texts.Items.Count, 1);
    EXPECT_EQ(static_cast<NDrawList::Text*>(lines.scene.texts.Items.At(0))->text, L"One\rTwo");
    EXPECT_EQ(lines.rectOwner, window_.Dialog());
    EXPECT_EQ(lines.target, nullptr);
    EXPECT_EQ(lines.toolRect.left, window_.X(74));
    EXPECT_EQ(lines.toolRect.top, window_.Y(30));
    EXPECT_EQ(lines.toolRect.right, window_.X(74) + window_.X(100));
    NWindowDC screen;
    NFont font;
    font.Create(screen.dc, nullptr, 13, 0);
    EXPECT_EQ(lines.toolRect.bottom, window_.Y(30) + font.TextHeight(L"Ay"));
    EXPECT_EQ(lines.delayMs, 0u);
    EXPECT_EQ(lines.durationMs, 0u);
    EXPECT_EQ(Page().RowTips[1]->toolRect.top, window_.Y(60));
}

TEST_F(AudioPage, TheAreasOfTipsGrowWithTheScreensLinesPerInch) {
    AddFiles(2);
    SetRows(Page().PageRowsAll, {L"One\rTwo"});
    window_.Open();
    const ScreenResolution screen(125);
    window_.Tick();
    ASSERT_EQ(Page().RowTips.Count(), 1);
    const RECT& area = Page().RowTips[0]->toolRect;
    const NWindowDC dc;
    NFont font;
    font.Create(dc.dc, nullptr, 16, 0);
    EXPECT_EQ(area.bottom - area.top, font.TextHeight(L"Ay"));
    font.Create(dc.dc, nullptr, 13, 0);
    EXPECT_GT(area.bottom - area.top, font.TextHeight(L"Ay"));
}

TEST_F(AudioPage, TipsAreThoseOfTheRowsInView) {
    ScriptedAudio audio;
    audio.Tag(L"title", L"One\rTwo");
    AddScripted(audio);
    AddFile(L"Short");
    window_.OpenAndRead();
    EXPECT_EQ(Page().RowTips.Count(), 0);
    Click(Page().cmdViewSingle);
    EXPECT_EQ(Page().RowTips.Count(), 1);
    Click(Page().cmdSkipNext);
    EXPECT_EQ(Page().RowTips.Count(), 0);
}
