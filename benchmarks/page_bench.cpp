#include "audiopage/audio_prop_page.h"
#include "audiopage/page_text.h"
#include "benchmarks/benches.h"
#include "benchmarks/measuring.h"
#include "foundation/module_instance.h"
#include "foundation/nmutex.h"
#include "resources/resource_ids.h"
#include "toolkit/dpi.h"

#include <cstdio>
#include <vector>

namespace {
constexpr int Rounds = 21;
constexpr int PaintsInARound = 20;
constexpr int RowsOfOneFile = 23;

// A dialog of the page's, in a window of its own on the screen, whose messages
// go to `messages`.
class PageDialog {
public:
    // The message's result, and whether it is done with.
    using Messages = std::function<LRESULT(HWND, UINT, WPARAM, LPARAM, int32_t*)>;

    explicit PageDialog(Messages messages) : messages_(std::move(messages)) {
        constexpr int size = 700;
        frame_ = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, size,
                                 size, nullptr, nullptr, nullptr, nullptr);
        window_ = CreateDialogParamW(NModuleInstance(), MAKEINTRESOURCEW(IDD_AUDIO_PAGE), frame_,
                                     Proc, reinterpret_cast<LPARAM>(this));
        ShowWindow(window_, SW_SHOWNA);
    }
    ~PageDialog() { DestroyWindow(frame_); }
    PageDialog(const PageDialog&) = delete;
    PageDialog& operator=(const PageDialog&) = delete;

    HWND Window() const { return window_; }
    // With the windows of the buttons on it, or without.
    void PaintSomeTimes(UINT children) const {
        for (int count = 0; count < PaintsInARound; ++count)
            RedrawWindow(window_, nullptr, nullptr,
                         RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | children);
        GdiFlush();
    }

private:
    static INT_PTR CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG)
            SetWindowLongPtrW(window, DWLP_USER, lParam);
        auto* dialog = reinterpret_cast<PageDialog*>(GetWindowLongPtrW(window, DWLP_USER));
        if (!dialog)
            return FALSE;
        int32_t handled = 0;
        const LRESULT result = dialog->messages_(window, message, wParam, lParam, &handled);
        SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
        return handled;
    }

    Messages messages_;
    HWND frame_ = nullptr;
    HWND window_ = nullptr;
};

// One text of the page, where the page has it.
struct PlacedText {
    POINT place;
    NString text;
};

std::vector<PlacedText> TextsOf(NKeyedList<clPropRow>& rows, HWND page) {
    std::vector<PlacedText> texts;
    for (int index = 0; index < rows.Count(); ++index) {
        const clPropRow& row = *rows[index];
        const int y = DialogUnitsY(row.Y, page);
        texts.push_back({{DialogUnitsX(abs(row.LabelX), page), y}, row.Label});
        texts.push_back({{DialogUnitsX(row.ValueX, page), y}, row.Value});
    }
    return texts;
}

// The least that a window with these texts could do.
LRESULT PaintTexts(HWND window, const std::vector<PlacedText>& texts) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    NFont font;
    SelectPageFont(font, dc);
    for (const PlacedText& text : texts)
        ExtTextOutW(dc, text.place.x, text.place.y, 0, nullptr, text.text.Text,
                    static_cast<UINT>(text.text.Length), nullptr);
    font.Deselect();
    EndPaint(window, &paint);
    return 0;
}

bool BenchPainting(const NString& sample) {
    clAudioPropPage page;
    page.Add(sample);
    PageDialog shown(
        [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam, int32_t* handled) {
            if (message == WM_INITDIALOG) {
                page.Hwnd = window;
                page.OnInit();
                return LRESULT{0};
            }
            return page.OnMessage(window, message, wParam, lParam, handled);
        });
    WaitForSingleObject(page.Reader.handle, INFINITE);
    page.OnTick();
    if (page.PageRowsOne.Count() != RowsOfOneFile || page.AlbumArtList.Count() == 0) {
        fprintf(stderr, "the page doesn't show the sample\n");
        return false;
    }
    const std::vector<PlacedText> texts = TextsOf(page.PageRowsOne, page.Hwnd);
    PageDialog bare([&](HWND window, UINT message, WPARAM, LPARAM, int32_t* handled) {
        *handled = message == WM_PAINT;
        return *handled ? PaintTexts(window, texts) : LRESULT{0};
    });
    const auto paintBare = [&] { bare.PaintSomeTimes(RDW_NOCHILDREN); };
    const MedianPair time = MeasurePair(
        Rounds, [&] { shown.PaintSomeTimes(RDW_NOCHILDREN); }, paintBare);
    const MedianPair all = MeasurePair(
        Rounds, [&] { shown.PaintSomeTimes(RDW_ALLCHILDREN); }, paintBare);
    printf("the page of one file, painted %d times\n", PaintsInARound);
    PrintTime("the page's 23 rows, cover and last line", time.subject);
    PrintTime("with the windows of its six buttons", all.subject);
    PrintTime("its rows' texts by ExtTextOutW alone", time.yardstick);
    PrintRatio(time.Ratio(), "at most 3");
    return true;
}

constexpr int HoverButtons = 8;
constexpr int TicksInARound = 2000;
constexpr COLORREF Mark = RGB(1, 2, 3); // of no picture

// Buttons that show whether they were painted anew.
class MarkedButtons {
public:
    explicit MarkedButtons(HWND window) {
        bar.Start(window);
        for (NButton& button : buttons_) {
            NButtonSpec spec;
            spec.x = 20 * static_cast<int32_t>(&button - buttons_);
            spec.flags = ButtonDefault | ButtonHover | ButtonDisabled | ButtonMasked;
            bar.Add(button, spec, IDB_SKIP_FIRST, 0, NModuleInstance());
        }
    }
    ~MarkedButtons() { bar.Destroy(); }
    MarkedButtons(const MarkedButtons&) = delete;
    MarkedButtons& operator=(const MarkedButtons&) = delete;

    void MarkAll() {
        for (NButton& button : buttons_)
            SetPixelV(button.display.dc, 0, 0, Mark);
    }
    bool ArePainted() const {
        for (const NButton& button : buttons_) {
            if (GetPixel(button.display.dc, 0, 0) != Mark)
                return true;
        }
        return false;
    }

    NButtonBar bar;

private:
    NButton buttons_[HoverButtons];
};

bool BenchHover() {
    PageDialog dialog([](HWND, UINT, WPARAM, LPARAM, int32_t*) { return LRESULT{0}; });
    constexpr int besideTheDialog = 650; // pixels
    SetCursorPos(besideTheDialog, besideTheDialog);
    MarkedButtons marked(dialog.Window());
    const auto tickOften = [&] {
        for (int count = 0; count < TicksInARound; ++count) {
            int32_t handled = 0;
            marked.bar.OnParentMessage(dialog.Window(), WM_TIMER, marked.bar.timerId, 0, &handled);
        }
    };
    // What two ticks ask of the platform. Under Wine a mutex and the cursor cost
    // a call to another process each.
    const auto askOften = [&] {
        NMutex lock;
        for (int count = 0; count < TicksInARound; ++count) {
            NMutexLock ofTheTick(lock);
            if (count % 2 != 0)
                continue;
            NMutexLock ofTheUpdate(lock);
            POINT place = {};
            GetCursorPos(&place);
            ScreenToClient(dialog.Window(), &place);
            ChildWindowFromPointEx(dialog.Window(), place, CWP_SKIPINVISIBLE);
        }
    };
    tickOften(); // the first look of all
    marked.MarkAll();
    const MedianPair time = MeasurePair(Rounds, tickOften, askOften);
    if (marked.ArePainted()) {
        fprintf(stderr, "a tick that changed nothing has painted\n");
        return false;
    }
    constexpr double toMicroseconds = 1e6 / TicksInARound;
    printf("the hover tick of %d buttons with nothing changed: no paint\n", HoverButtons);
    printf("%-50s%10.3f us\n", "a tick", time.subject * toMicroseconds);
    printf("%-50s%10.3f us\n", "of which calls of the platform", time.yardstick * toMicroseconds);
    printf("  work of its own %.3f us (goal: under 20)\n\n",
           (time.subject - time.yardstick) * toMicroseconds);
    fflush(stdout);
    return true;
}
} // namespace

bool BenchPage(const BenchPlaces& places) {
    return BenchPainting(BenchPlaces::InFolder(places.samples, L"sample.flac")) && BenchHover();
}
