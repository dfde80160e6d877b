#include "tests/support/clipboard_turn.h"
#include "toolkit/nclipboard.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {
HWND MakeWindow() {
    return CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                           nullptr);
}

// A window of the desktop that another thread holds the clipboard for.
class HolderElsewhere {
public:
    HolderElsewhere() {
        thread_ = std::thread([this] {
            HWND window = MakeWindow();
            holds = OpenClipboard(window) != FALSE;
            SetEvent(held_);
            WaitForSingleObject(enough_, INFINITE);
            CloseClipboard();
            DestroyWindow(window);
        });
        WaitForSingleObject(held_, INFINITE);
    }
    ~HolderElsewhere() {
        SetEvent(enough_);
        thread_.join();
        CloseHandle(held_);
        CloseHandle(enough_);
    }
    HolderElsewhere(const HolderElsewhere&) = delete;
    HolderElsewhere& operator=(const HolderElsewhere&) = delete;

    bool holds = false;

private:
    HANDLE held_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE enough_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread thread_;
};

// Asked for a window of another thread: whoever opened it for no window is no
// other to one that does so too.
bool OthersCanOpen() {
    bool opened = false;
    std::thread([&] {
        HWND window = MakeWindow();
        opened = OpenClipboard(window) != FALSE;
        if (opened)
            CloseClipboard();
        DestroyWindow(window);
    }).join();
    return opened;
}

std::string BytesOf(const std::wstring& text) {
    return {reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(wchar_t)};
}

bool canEmpty = true;
} // namespace

extern "C" {
extern decltype(&::EmptyClipboard) __real___imp_EmptyClipboard;
extern decltype(&::EmptyClipboard) __wrap___imp_EmptyClipboard;
decltype(&::EmptyClipboard) __wrap___imp_EmptyClipboard = []() -> BOOL {
    return canEmpty && __real___imp_EmptyClipboard();
};
}

TEST(NClipboard, OpenEmptiesAndHoldsItUntilClose) {
    ClipboardTurn turn;
    ASSERT_TRUE(NClipboard().SetTextW(L"before"));
    NClipboard clipboard;
    EXPECT_FALSE(clipboard.IsOpen());
    EXPECT_TRUE(clipboard.Open(nullptr));
    EXPECT_TRUE(clipboard.IsOpen());
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_FALSE(OthersCanOpen());
    clipboard.Close();
    EXPECT_FALSE(clipboard.IsOpen());
    EXPECT_TRUE(OthersCanOpen());
}

TEST(NClipboard, OpenAgainEmptiesAndHoldsItToo) {
    ClipboardTurn turn;
    NClipboard clipboard;
    ASSERT_TRUE(clipboard.Open(nullptr));
    ASSERT_TRUE(clipboard.SetTextA("before"));
    EXPECT_TRUE(clipboard.Open(nullptr));
    EXPECT_TRUE(clipboard.IsOpen());
    EXPECT_FALSE(OthersCanOpen());
    clipboard.Close();
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_TEXT));
}

TEST(NClipboard, OneThatCannotBeEmptiedIsLeftAsItIs) {
    ClipboardTurn turn;
    ASSERT_TRUE(NClipboard().SetTextA("before"));
    NClipboard clipboard;
    canEmpty = false;
    EXPECT_FALSE(clipboard.Open(nullptr));
    EXPECT_FALSE(clipboard.IsOpen());
    EXPECT_TRUE(OthersCanOpen());
    EXPECT_FALSE(clipboard.SetTextA("other"));
    EXPECT_TRUE(OthersCanOpen());
    canEmpty = true;
    EXPECT_EQ(std::string("before", 7), ClipboardTurn::Bytes(CF_TEXT));
}

TEST(NClipboard, CloseWithoutOpenLeavesTheClipboardAsItIs) {
    ClipboardTurn turn;
    NClipboard holder;
    ASSERT_TRUE(holder.Open(nullptr));
    NClipboard other;
    other.Close();
    EXPECT_FALSE(OthersCanOpen());
}

TEST(NClipboard, ItsEndClosesTheClipboard) {
    ClipboardTurn turn;
    ASSERT_TRUE(NClipboard().Open(nullptr));
    EXPECT_TRUE(OthersCanOpen());
}

TEST(NClipboard, OpenIsForTheWindow) {
    ClipboardTurn turn;
    HWND window = MakeWindow();
    NClipboard clipboard;
    EXPECT_TRUE(clipboard.Open(window));
    EXPECT_EQ(window, GetOpenClipboardWindow());
    EXPECT_EQ(window, GetClipboardOwner());
    clipboard.Close();
    EXPECT_TRUE(clipboard.SetTextA("of the window", window));
    EXPECT_EQ(window, GetClipboardOwner());
    DestroyWindow(window);
}

TEST(NClipboard, BothTextsStandThereAfterOneOpen) {
    ClipboardTurn turn;
    NClipboard clipboard;
    ASSERT_TRUE(clipboard.Open(nullptr));
    EXPECT_TRUE(clipboard.SetTextA("Klang"));
    EXPECT_TRUE(clipboard.SetTextW(L"Klang \x97f3\x8272"));
    EXPECT_TRUE(clipboard.IsOpen());
    EXPECT_FALSE(OthersCanOpen());
    clipboard.Close();
    EXPECT_EQ(std::string("Klang", 6), ClipboardTurn::Bytes(CF_TEXT));
    EXPECT_EQ(BytesOf(L"Klang \x97f3\x8272"), ClipboardTurn::Bytes(CF_UNICODETEXT));
}

TEST(NClipboard, ATextWithoutOpenHasARoundOfItsOwn) {
    ClipboardTurn turn;
    NClipboard clipboard;
    ASSERT_TRUE(clipboard.SetTextW(L"before"));
    EXPECT_TRUE(clipboard.SetTextA("narrow"));
    EXPECT_FALSE(clipboard.IsOpen());
    EXPECT_TRUE(OthersCanOpen());
    EXPECT_EQ(std::string("narrow", 7), ClipboardTurn::Bytes(CF_TEXT));
    EXPECT_NE(BytesOf(L"before"), ClipboardTurn::Bytes(CF_UNICODETEXT));
    EXPECT_TRUE(clipboard.SetTextW(L"wide"));
    EXPECT_EQ(BytesOf(L"wide"), ClipboardTurn::Bytes(CF_UNICODETEXT));
}

TEST(NClipboard, AnEmptyTextIsItsTerminator) {
    ClipboardTurn turn;
    EXPECT_TRUE(NClipboard().SetTextA(""));
    EXPECT_EQ(std::string("", 1), ClipboardTurn::Bytes(CF_TEXT));
    EXPECT_TRUE(NClipboard().SetTextW(L""));
    EXPECT_EQ(BytesOf(L""), ClipboardTurn::Bytes(CF_UNICODETEXT));
}

TEST(NClipboard, DataIsCopied) {
    ClipboardTurn turn;
    const UINT format = RegisterClipboardFormatW(L"TonewrightTest");
    std::string data("\0\1\2\3", 4);
    NClipboard clipboard;
    ASSERT_TRUE(clipboard.Open(nullptr));
    EXPECT_TRUE(clipboard.SetData(data.data(), data.size(), format));
    data.assign("????");
    clipboard.Close();
    EXPECT_EQ(std::string("\0\1\2\3", 4), ClipboardTurn::Bytes(format));
}

TEST(NClipboard, ASizeOfZeroHandsTheHandleOver) {
    ClipboardTurn turn;
    const UINT format = RegisterClipboardFormatW(L"TonewrightTest");
    HGLOBAL ready = GlobalAlloc(GMEM_MOVEABLE, 3);
    memcpy(GlobalLock(ready), "abc", 3);
    GlobalUnlock(ready);
    EXPECT_TRUE(NClipboard().SetData(ready, 0, format));
    EXPECT_EQ("abc", ClipboardTurn::Bytes(format));
}

TEST(NClipboard, WhileAnotherWindowHoldsItEverythingFails) {
    ClipboardTurn turn;
    ASSERT_TRUE(NClipboard().SetTextA("before"));
    {
        HolderElsewhere holder;
        ASSERT_TRUE(holder.holds);
        NClipboard clipboard;
        EXPECT_FALSE(clipboard.Open(nullptr));
        EXPECT_FALSE(clipboard.IsOpen());
        EXPECT_FALSE(clipboard.SetTextA("other"));
        EXPECT_FALSE(clipboard.SetTextW(L"other"));
        EXPECT_FALSE(clipboard.SetData("other", 5, CF_TEXT));
        clipboard.Close();
        EXPECT_FALSE(OthersCanOpen());
    }
    EXPECT_EQ(std::string("before", 7), ClipboardTurn::Bytes(CF_TEXT));
}

TEST(NClipboard, ADataSetThatFailsLeavesTheClipboardClosed) {
    ClipboardTurn turn;
    NClipboard clipboard;
    constexpr UINT noFormat = 0;
    EXPECT_FALSE(clipboard.SetData("abc", 3, noFormat));
    EXPECT_FALSE(clipboard.IsOpen());
    EXPECT_TRUE(OthersCanOpen());
}

TEST(NClipboard, NoTextIsAFailure) {
    ClipboardTurn turn;
    NClipboard clipboard;
    ASSERT_TRUE(clipboard.SetTextA("before"));
    EXPECT_FALSE(clipboard.SetTextA(nullptr));
    EXPECT_FALSE(clipboard.SetTextW(nullptr));
    EXPECT_FALSE(clipboard.SetData(nullptr, 0, CF_TEXT));
    EXPECT_FALSE(clipboard.SetData(nullptr, 4, CF_TEXT));
    EXPECT_EQ(std::string("before", 7), ClipboardTurn::Bytes(CF_TEXT));
}
