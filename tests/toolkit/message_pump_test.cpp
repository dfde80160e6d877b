#include "tests/toolkit/recording_window.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/watched_calls.h"
#include "toolkit/message_pump.h"

#include <gtest/gtest.h>

namespace {
using Calls = std::vector<std::string>;

// A window whose key messages are posted and written down; `quit` is set by
// the key Escape.
class MessagePump : public testing::Test {
protected:
    struct Window : RecordingWindow {
        bool* quit = nullptr;

        void OnKeyUp(uint32_t key, uint32_t flags) override {
            RecordingWindow::OnKeyUp(key, flags);
            if (key == VK_ESCAPE)
                *quit = true;
        }
    };

    MessagePump() {
        window.quit = &quit;
        window.Make();
        PumpPending(&quit, nullptr);
        window.calls.clear();
    }

    ~MessagePump() override {
        window.Destroy();
        MSG rest;
        while (PeekMessageW(&rest, nullptr, 0, 0, PM_REMOVE)) {
        }
    }

    void PostKey(WPARAM key) { PostMessageW(window.hwnd, WM_KEYUP, key, 0); }

    Calls Keys(std::initializer_list<WPARAM> keys) {
        Calls expected;
        for (WPARAM key : keys)
            expected.push_back(Call("OnKeyUp", key, 0));
        return expected;
    }

    // Whether a message of the window is still queued.
    bool Waiting() {
        MSG message;
        return PeekMessageW(&message, window.hwnd, WM_KEYUP, WM_KEYUP, PM_NOREMOVE);
    }

    bool quit = false;
    Window window;
};
} // namespace

TEST_F(MessagePump, BlockingHandlesOneMessage) {
    PostKey('A');
    PostKey('B');
    EXPECT_TRUE(PumpMessages(&quit, true, nullptr));
    EXPECT_EQ(Keys({'A'}), window.calls);
    EXPECT_TRUE(Waiting());
    EXPECT_FALSE(quit);
}

TEST_F(MessagePump, BlockingStopsAtTheMessageToQuit) {
    PostQuitMessage(3);
    EXPECT_FALSE(PumpMessages(&quit, true, nullptr));
    EXPECT_TRUE(quit);
}

TEST_F(MessagePump, BlockingStopsAtAnErrorOfThePlatform) {
    WatchedCalls watched;
    __wrap___imp_GetMessageW = [](MSG*, HWND ofWindow, UINT, UINT) -> BOOL {
        EXPECT_EQ(nullptr, ofWindow);
        return -1;
    };
    EXPECT_FALSE(PumpMessages(&quit, true, nullptr));
    EXPECT_TRUE(quit);
}

TEST_F(MessagePump, BlockingWithQuitSetTakesAMessageAndDropsIt) {
    quit = true;
    PostKey('A');
    EXPECT_FALSE(PumpMessages(&quit, true, nullptr));
    EXPECT_EQ(Calls{}, window.calls);
    EXPECT_FALSE(Waiting());
}

TEST_F(MessagePump, BlockingGoesOnAfterAMessageWhoseHandlerSetsQuit) {
    PostKey(VK_ESCAPE);
    EXPECT_TRUE(PumpMessages(&quit, true, nullptr));
    EXPECT_EQ(Keys({VK_ESCAPE}), window.calls);
    EXPECT_TRUE(quit);
}

TEST_F(MessagePump, PendingHandlesAllMessagesAndGoesOn) {
    EXPECT_TRUE(PumpPending(&quit, nullptr));
    PostKey('A');
    PostKey('B');
    PostKey('C');
    EXPECT_TRUE(PumpPending(&quit, nullptr));
    EXPECT_EQ(Keys({'A', 'B', 'C'}), window.calls);
    EXPECT_FALSE(quit);
}

TEST_F(MessagePump, PendingIsPumpingWithoutBlocking) {
    PostKey('A');
    PostKey('B');
    EXPECT_TRUE(PumpMessages(&quit, false, nullptr));
    EXPECT_EQ(Keys({'A', 'B'}), window.calls);
}

TEST_F(MessagePump, PendingStopsAtTheMessageToQuit) {
    PostKey('A');
    PostQuitMessage(3);
    EXPECT_FALSE(PumpPending(&quit, nullptr));
    EXPECT_EQ(Keys({'A'}), window.calls);
    EXPECT_TRUE(quit);
}

TEST_F(MessagePump, PendingWithQuitSetDropsTheFirstMessageAndStops) {
    quit = true;
    EXPECT_TRUE(PumpPending(&quit, nullptr)); // there is none to stop at
    PostKey('A');
    PostKey('B');
    EXPECT_FALSE(PumpPending(&quit, nullptr));
    EXPECT_EQ(Calls{}, window.calls);
    EXPECT_TRUE(Waiting());
}

TEST_F(MessagePump, AHandlerThatSetsQuitEndsTheLoopAtTheNextMessage) {
    PostKey(VK_ESCAPE);
    PostKey('A');
    EXPECT_FALSE(PumpPending(&quit, nullptr));
    EXPECT_EQ(Keys({VK_ESCAPE}), window.calls);
    EXPECT_FALSE(Waiting());
}

TEST_F(MessagePump, AHandlerThatSetsQuitAtTheLastMessageLetsTheLoopGoOn) {
    PostKey(VK_ESCAPE);
    EXPECT_TRUE(PumpPending(&quit, nullptr));
    EXPECT_TRUE(quit);
}

TEST_F(MessagePump, KeysBecomeCharacters) {
    PostMessageW(window.hwnd, WM_KEYDOWN, 'A', 0x1E0001);
    EXPECT_TRUE(PumpPending(&quit, nullptr));
    ASSERT_EQ(2u, window.calls.size());
    EXPECT_EQ(Call("OnChar", 'a'), window.calls[1]);
}

TEST_F(MessagePump, ADialogsKeysAreTheDialogs) {
    for (bool blocking : {true, false}) {
        RecordingWindow dialog;
        dialog.ShowDialog(IDD_PLAIN, nullptr, false);
        PumpPending(&quit, nullptr);
        dialog.calls.clear();
        PostMessageW(dialog.hwnd, WM_KEYDOWN, VK_RETURN, 0x1C0001);
        EXPECT_TRUE(PumpMessages(&quit, blocking, dialog.hwnd));
        EXPECT_EQ((Calls{Call("OnOK", 1), Call("OnCommand", IDOK, dialog.GetItem(IDOK), 0)}),
                  dialog.calls);
        // To another window they are keys.
        dialog.calls.clear();
        PostMessageW(dialog.hwnd, WM_KEYDOWN, VK_RETURN, 0x1C0001);
        EXPECT_TRUE(PumpMessages(&quit, blocking, nullptr));
        ASSERT_FALSE(dialog.calls.empty());
        EXPECT_EQ(Call("OnKeyDown", VK_RETURN, 0x1C0001), dialog.calls[0]);
    }
}

TEST_F(MessagePump, ADialogThatIsGoneIsNotAsked) {
    static std::vector<HWND> asked;
    asked.clear();
    WatchedCalls watched;
    __wrap___imp_IsDialogMessageW = [](HWND ofDialog, MSG* message) {
        asked.push_back(ofDialog);
        return __real___imp_IsDialogMessageW(ofDialog, message);
    };
    RecordingWindow dialog;
    dialog.ShowDialog(IDD_PLAIN, nullptr, false);
    const HWND gone = dialog.hwnd;
    PumpPending(&quit, nullptr);
    for (bool blocking : {true, false}) {
        PostKey('A');
        EXPECT_TRUE(PumpMessages(&quit, blocking, gone));
    }
    EXPECT_EQ((std::vector{gone, gone}), asked);
    dialog.Destroy();
    PumpPending(&quit, nullptr);
    for (bool blocking : {true, false}) {
        asked.clear();
        window.calls.clear();
        PostKey('A');
        EXPECT_TRUE(PumpMessages(&quit, blocking, gone));
        EXPECT_EQ(Keys({'A'}), window.calls);
        EXPECT_EQ(std::vector<HWND>{}, asked);
    }
}
