#include "audiopage/rows_clipboard.h"
#include "foundation/module_instance.h"
#include "foundation/unique_handle.h"
#include "tests/audiopage/painted_canvas.h"
#include "tests/support/clipboard_turn.h"
#include "tests/support/leak_counters.h"
#include "tests/support/nstring_printer.h"
#include "tests/support/test_cursor.h"
#include "toolkit/nicon.h"
#include "toolkit/ntooltip.h"
#include "toolkit/tip_platform.h"

#include <atomic>
#include <string>
#include <thread>

namespace {
class CopiedRows : public testing::Test {
protected:
    void Add(const wchar_t* label, const wchar_t* value) {
        clPropRow& row = *rows_.Add();
        row.Label = label;
        row.Value = value;
    }

    NKeyedList<clPropRow> rows_;
    ClipboardTurn turn_;
    TestCursor cursor_;
};
} // namespace

TEST_F(CopiedRows, AreLinesOfLabelAndValueWithNoBreakBehindTheLast) {
    Add(L"Artist", L"Anna");
    Add(L"Title", L"");
    Add(L"Type", L"mp3 File    [.mp3]");
    EXPECT_EQ(RowsAsText(rows_), L"Artist Anna\r\nTitle \r\nType mp3 File    [.mp3]");
}

TEST_F(CopiedRows, HaveASemicolonForEachCarriageReturn) {
    Add(L"Artist", L"One\rTwo\rThree");
    Add(L"Sample Rate", L"44.1 KHz\r");
    Add(L"Genre", L"Folk\r\nPop");
    EXPECT_EQ(RowsAsText(rows_),
              L"Artist One; Two; Three\r\nSample Rate 44.1 KHz; \r\nGenre Folk; \nPop");
}

TEST_F(CopiedRows, OfNoRowsAreAnEmptyText) {
    EXPECT_TRUE(RowsAsText(rows_).IsEmpty());
}

TEST_F(CopiedRows, GoToTheClipboardNarrowAndWide) {
    Add(L"Artist", L"Bj\u00F6rk \u97F3");
    NToolTip tip;
    CopyRowsToClipboard(rows_, tip);
    EXPECT_EQ(ClipboardTurn::WideText(), L"Artist Bj\u00F6rk \u97F3");
    NString text(L"Artist Bj\u00F6rk \u97F3");
    EXPECT_STREQ(ClipboardTurn::Bytes(CF_TEXT).c_str(), text.ToNarrow());
}

// As the platform tells it, what is set comes before what is made of that.
TEST_F(CopiedRows, TheNarrowTextIsSetFirstAndForNoWindow) {
    Add(L"Artist", L"Anna");
    NToolTip tip;
    CopyRowsToClipboard(rows_, tip);
    EXPECT_EQ(GetClipboardOwner(), nullptr);
    ASSERT_TRUE(OpenClipboard(nullptr));
    const UINT first = EnumClipboardFormats(0);
    const UINT second = EnumClipboardFormats(first);
    CloseClipboard();
    EXPECT_EQ(first, static_cast<UINT>(CF_TEXT));
    EXPECT_EQ(second, static_cast<UINT>(CF_UNICODETEXT));
}

TEST_F(CopiedRows, ATipNearTheCursorTellsOfIt) {
    Add(L"Artist", L"Anna");
    TestCursor::MoveTo(300, 200);
    NToolTip tip;
    CopyRowsToClipboard(rows_, tip);
    EXPECT_TRUE(tip.IsVisible());
    EXPECT_EQ(tip.fixedX, 300);
    EXPECT_EQ(tip.fixedY, 190);
    EXPECT_EQ(tip.durationMs, 3000u);
    EXPECT_EQ(tip.target, nullptr);
    EXPECT_EQ(tip.rectOwner, nullptr);
    ASSERT_EQ(tip.scene.texts.Count(), 1);
    EXPECT_EQ(tip.scene.texts[0]->text, L"Copied to Clipboard");
    ASSERT_EQ(tip.scene.icons.Count(), 1);
    EXPECT_EQ(tip.scene.icons[0]->icon.Width(), 16);
}

namespace {
Picture PictureOf(const NIcon& icon) {
    const Paper paper(16, 16);
    EXPECT_TRUE(icon.Draw(paper.Dc(), 0, 0));
    return paper.Seen();
}

Picture PictureOfIcon(int id) {
    NIcon icon;
    EXPECT_TRUE(icon.Load(id, 16, 16, NModuleInstance()));
    return PictureOf(icon);
}
} // namespace

TEST_F(CopiedRows, TheTipHasTheIconOfTheClipboard) {
    NToolTip tip;
    CopyRowsToClipboard(rows_, tip);
    ASSERT_EQ(tip.scene.icons.Count(), 1);
    const Picture shown = PictureOf(tip.scene.icons[0]->icon);
    EXPECT_TRUE(SamePictures(shown, PictureOfIcon(223)));
    EXPECT_FALSE(SamePictures(shown, PictureOfIcon(224)));
}

namespace {
// Has another thread try to open the clipboard each time that the owner of a
// tip waits for it.
class TriesWhileWaiting {
public:
    TriesWhileWaiting() {
        tries = opened = 0;
        former_ = tipPlatform;
        tipPlatform.wait = [](DWORD ms) {
            std::thread(Try).join();
            former_.wait(ms);
        };
    }
    ~TriesWhileWaiting() { tipPlatform = former_; }
    TriesWhileWaiting(const TriesWhileWaiting&) = delete;
    TriesWhileWaiting& operator=(const TriesWhileWaiting&) = delete;

    inline static std::atomic<int> tries;
    inline static std::atomic<int> opened;

private:
    static void Try() {
        const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                            nullptr, nullptr);
        ++tries;
        if (OpenClipboard(window)) {
            ++opened;
            CloseClipboard();
        }
        DestroyWindow(window);
    }

    inline static TipPlatform former_{};
};
} // namespace

TEST_F(CopiedRows, TheClipboardStaysOpenUntilTheTipIsUp) {
    Add(L"Artist", L"Anna");
    const TriesWhileWaiting tries;
    NToolTip tip;
    CopyRowsToClipboard(rows_, tip);
    EXPECT_TRUE(tip.IsVisible());
    EXPECT_GT(tries.tries, 0);
    EXPECT_EQ(tries.opened, 0);
}

namespace {
// Holds the clipboard on another thread, with other text on it.
class HeldClipboard {
public:
    HeldClipboard() {
        holder_ = std::thread([this] {
            const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                                nullptr, nullptr, nullptr);
            isHeld_ = OpenClipboard(window) != FALSE;
            SetEvent(held_.Get());
            WaitForSingleObject(release_.Get(), INFINITE);
            CloseClipboard();
            DestroyWindow(window);
        });
        WaitForSingleObject(held_.Get(), INFINITE);
        EXPECT_TRUE(isHeld_);
    }
    ~HeldClipboard() { Release(); }
    HeldClipboard(const HeldClipboard&) = delete;
    HeldClipboard& operator=(const HeldClipboard&) = delete;

    void Release() {
        SetEvent(release_.Get());
        if (holder_.joinable())
            holder_.join();
    }

private:
    UniqueKernelHandle held_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    UniqueKernelHandle release_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<bool> isHeld_ = false;
    std::thread holder_;
};
} // namespace

// It says so although nothing was copied: wanted.
TEST_F(CopiedRows, TheTipShowsAlsoWhenSomebodyElseHoldsTheClipboard) {
    Add(L"Artist", L"First");
    NToolTip tip;
    CopyRowsToClipboard(rows_, tip);
    tip.Clear();
    HeldClipboard held;
    Add(L"Title", L"Second");
    CopyRowsToClipboard(rows_, tip);
    EXPECT_TRUE(tip.IsVisible());
    held.Release();
    EXPECT_EQ(ClipboardTurn::WideText(), L"Artist First");
}

TEST_F(CopiedRows, TheClipboardIsFreeAfterwards) {
    NToolTip tip;
    CopyRowsToClipboard(rows_, tip);
    HeldClipboard held;
}
