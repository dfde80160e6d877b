#include "tests/toolkit/recording_window.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/watched_calls.h"
#include "tests/toolkit/window_facts.h"
#include "toolkit/message_dispatch.h"
#include "toolkit/window_procedures.h"
#include "toolkit/window_registry.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <thread>

namespace {
HWND SomeWindow() {
    return reinterpret_cast<HWND>(0x1234567890);
}

const LPARAM SomeWindowParameter = reinterpret_cast<LPARAM>(SomeWindow());

DRAWITEMSTRUCT drawRecord = {ODT_STATIC, 77, 0, 0, 0, SomeWindow(), nullptr, {}, 0};
NMHDR notification = {SomeWindow(), 0x123456789A, static_cast<UINT>(-3)};

// What a row does with `handled`.
enum Kept {
    AsTheHandlersLeaveIt, // 1, or 0 once a handler clears it
    AsItComes,            // 1: the base's operation doesn't clear it
    Forced1,
    Forced0,
};

struct Row {
    const char* name;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    Calls calls;
    Kept kept = AsTheHandlersLeaveIt;
    LRESULT result = 0; // if handled

    int32_t HandledWhen(bool claimed) const {
        if (kept == Forced0)
            return 0;
        return kept == AsTheHandlersLeaveIt ? claimed : 1;
    }
};

// The corner left of and above the client area by 5 and by 7.
const LPARAM Outside = MAKELPARAM(0xFFFB, 0xFFF9);
constexpr int32_t OutsideX = 65531;
constexpr int32_t OutsideY = 65529;

std::vector<Row> Table() {
    return {
        {"create", WM_CREATE, 0, 0, {Call("OnCreate", 1)}, Forced1},
        {"destroy", WM_DESTROY, 0, 0, {Call("OnDestroy", 1)}},
        {"move", WM_MOVE, 0, MAKELPARAM(300, 40), {Call("OnMove", 300, 40)}},
        {"move, signed", WM_MOVE, 0, Outside, {Call("OnMove", -5, -7)}},
        {"size",
         WM_SIZE,
         SIZE_MAXIMIZED,
         MAKELPARAM(640, 0x9000),
         {Call("OnSize", 640, 0x9000, SIZE_MAXIMIZED)}},
        {"activate",
         WM_ACTIVATE,
         MAKEWPARAM(WA_CLICKACTIVE, 9),
         SomeWindowParameter,
         {Call("OnActivate", SomeWindow(), 9, WA_CLICKACTIVE)}},
        {"deactivate",
         WM_ACTIVATE,
         MAKEWPARAM(WA_INACTIVE, 9),
         SomeWindowParameter,
         {Call("OnDeactivate", SomeWindow(), 9)}},
        {"paint", WM_PAINT, 0, 0, {Call("OnPaint", 1)}, Forced0},
        {"close", WM_CLOSE, 0, 0, {Call("OnClose", 1)}},
        {"erase",
         WM_ERASEBKGND,
         0xABCD,
         0,
         {Call("OnEraseBackground", 0xABCD)},
         AsTheHandlersLeaveIt,
         1},
        {"hide", WM_SHOWWINDOW, 0, SW_PARENTCLOSING, {Call("OnHide", SW_PARENTCLOSING)}},
        {"show", WM_SHOWWINDOW, 1, SW_PARENTOPENING, {Call("OnShow", SW_PARENTOPENING)}},
        {"draw item",
         WM_DRAWITEM,
         5,
         reinterpret_cast<LPARAM>(&drawRecord),
         {Call("OnDrawItem", SomeWindow(), 77, &drawRecord)}},
        {"notify",
         WM_NOTIFY,
         5,
         reinterpret_cast<LPARAM>(&notification),
         {Call("OnNotify", 0x123456789A, 0xFFFFFFFDu, SomeWindow())}},
        {"context menu",
         WM_CONTEXTMENU,
         reinterpret_cast<WPARAM>(SomeWindow()),
         Outside,
         {Call("OnContextMenu", SomeWindow(), OutsideX, OutsideY)}},
        {"key down",
         WM_KEYDOWN,
         VK_RETURN,
         static_cast<int32_t>(0xC01C0001),
         {Call("OnKeyDown", VK_RETURN, 0xC01C0001u)}},
        {"key up",
         WM_KEYUP,
         VK_SPACE,
         static_cast<int32_t>(0xC0390001),
         {Call("OnKeyUp", VK_SPACE, 0xC0390001u)}},
        {"char", WM_CHAR, 0x1263A, 1, {Call("OnChar", 0x263A)}},
        {"command",
         WM_COMMAND,
         MAKEWPARAM(4711, 0),
         SomeWindowParameter,
         {Call("OnCommand", 4711, SomeWindow(), 0)},
         AsItComes},
        {"system command", WM_SYSCOMMAND, 0x71237, 0, {Call("OnSysCommand", 0x1230)}, Forced0},
        {"unknown timer", WM_TIMER, 3, 0, {}, AsItComes},
        {"mouse move",
         WM_MOUSEMOVE,
         MK_SHIFT,
         Outside,
         {Call("OnMouseMove", OutsideX, OutsideY, MK_SHIFT)}},
        {"left down",
         WM_LBUTTONDOWN,
         MK_LBUTTON,
         Outside,
         {Call("OnMouseDown", OutsideX, OutsideY, WM_LBUTTONDOWN, MK_LBUTTON)}},
        {"right down",
         WM_RBUTTONDOWN,
         MK_RBUTTON,
         MAKELPARAM(3, 4),
         {Call("OnMouseDown", 3, 4, WM_RBUTTONDOWN, MK_RBUTTON)}},
        {"middle down",
         WM_MBUTTONDOWN,
         MK_MBUTTON,
         MAKELPARAM(3, 4),
         {Call("OnMouseDown", 3, 4, WM_MBUTTONDOWN, MK_MBUTTON)}},
        {"left up",
         WM_LBUTTONUP,
         MK_CONTROL,
         Outside,
         {Call("OnMouseUp", OutsideX, OutsideY, WM_LBUTTONUP, MK_CONTROL)}},
        {"right up", WM_RBUTTONUP, 0, MAKELPARAM(3, 4), {Call("OnMouseUp", 3, 4, WM_RBUTTONUP, 0)}},
        {"middle up",
         WM_MBUTTONUP,
         0,
         MAKELPARAM(3, 4),
         {Call("OnMouseUp", 3, 4, WM_MBUTTONUP, 0)}},
        {"wheel, toward the user",
         WM_MOUSEWHEEL,
         MAKEWPARAM(MK_CONTROL, static_cast<WORD>(-120)),
         Outside,
         {Call("OnMouseWheel", OutsideX, OutsideY, -120, MK_CONTROL)}},
        {"wheel, away",
         WM_MOUSEWHEEL,
         MAKEWPARAM(0, 240),
         MAKELPARAM(3, 4),
         {Call("OnMouseWheel", 3, 4, 240, 0)}},
        {"anything else", WM_SETCURSOR, 1, 2, {}, Forced0},
        {"a double click is anything else", WM_LBUTTONDBLCLK, 1, 2, {}, Forced0},
        {"draw item without a record", WM_DRAWITEM, 5, 0, {}, Forced0},
        {"notify without a record", WM_NOTIFY, 5, 0, {}, Forced0},
    };
}

constexpr LRESULT DefaultResult = 815;

// Default processing only counts its calls.
class CountedDefault : WatchedCalls {
public:
    CountedDefault() {
        calls = 0;
        __wrap___imp_DefWindowProcW = [](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
            ++calls;
            return DefaultResult;
        };
    }
    static inline int calls;
};

LRESULT Dispatch(NWindow& window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return DispatchToObject(window, {window.hwnd, message, wParam, lParam});
}

class DialogOfRecords : public RecordingWindow {
public:
    DialogOfRecords() { ShowDialog(IDD_PLAIN, nullptr, false); }
};

// As a dialog's own procedure answers.
INT_PTR CallDialogProcedure(HWND dialog, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return NDialogProc(dialog, message, wParam, lParam);
}

LRESULT StoredResult(HWND dialog) {
    return GetWindowLongPtrW(dialog, DWLP_MSGRESULT);
}
} // namespace

TEST(MessageDispatch, EachMessageOfAWindowGoesToItsOperation) {
    for (const Row& row : Table()) {
        for (bool claimed : {true, false}) {
            SCOPED_TRACE(std::string(row.name) + (claimed ? ", claimed" : ", left"));
            RecordingWindow window;
            window.Make();
            ASSERT_NE(nullptr, window.hwnd);
            window.calls.clear();
            window.claims = claimed;
            CountedDefault processing;
            const LRESULT result = Dispatch(window, row.message, row.wParam, row.lParam);
            EXPECT_EQ(row.calls, window.calls);
            EXPECT_EQ(row.HandledWhen(claimed), window.handled);
            EXPECT_EQ(window.handled ? 0 : 1, CountedDefault::calls);
            EXPECT_EQ(window.handled ? row.result : DefaultResult, result);
        }
    }
}

TEST(MessageDispatch, EachMessageOfADialogGoesThereTooAndItsResultIsStored) {
    constexpr LRESULT Unset = 123456;
    for (const Row& row : Table()) {
        for (bool claimed : {true, false}) {
            SCOPED_TRACE(std::string(row.name) + (claimed ? ", claimed" : ", left"));
            DialogOfRecords dialog;
            ASSERT_NE(nullptr, dialog.hwnd);
            dialog.calls.clear();
            dialog.claims = claimed;
            SetWindowLongPtrW(dialog.hwnd, DWLP_MSGRESULT, Unset);
            CountedDefault processing;
            const INT_PTR answer =
                CallDialogProcedure(dialog.hwnd, row.message, row.wParam, row.lParam);
            EXPECT_EQ(row.calls, dialog.calls);
            EXPECT_EQ(row.HandledWhen(claimed), answer);
            EXPECT_EQ(answer ? row.result : 0, StoredResult(dialog.hwnd));
            // A dialog's default processing is not this procedure's affair.
            EXPECT_EQ(0, CountedDefault::calls);
        }
    }
}

TEST(MessageDispatch, TheStartOfADialogIsItsCreation) {
    DialogOfRecords dialog;
    dialog.calls.clear();
    for (bool claimed : {true, false}) {
        dialog.claims = claimed;
        EXPECT_EQ(1, Dispatch(dialog, WM_INITDIALOG, 0, 0));
        EXPECT_EQ(1, dialog.handled);
    }
    EXPECT_EQ((Calls{Call("OnCreate", 1), Call("OnCreate", 1)}), dialog.calls);
}

TEST(MessageDispatch, NineCommandsHaveOperationsOfTheirOwnBeforeOnCommand) {
    const struct {
        WORD id;
        const char* operation;
    } buttons[] = {{1, "OnOK"},    {2, "OnCancel"},      {3, "OnAbort"},
                   {4, "OnRetry"}, {5, "OnIgnore"},      {6, "OnYes"},
                   {7, "OnNo"},    {8, "OnCloseButton"}, {9, "OnHelp"}};
    RecordingWindow window;
    window.Make();
    for (const auto& button : buttons) {
        SCOPED_TRACE(button.operation);
        window.calls.clear();
        EXPECT_EQ(0, Dispatch(window, WM_COMMAND, MAKEWPARAM(button.id, 0), SomeWindowParameter));
        EXPECT_EQ((Calls{Call(button.operation, 1), Call("OnCommand", button.id, SomeWindow(), 0)}),
                  window.calls);
        EXPECT_EQ(1, window.handled);

        // With another notification code there is OnCommand alone.
        window.calls.clear();
        Dispatch(window, WM_COMMAND, MAKEWPARAM(button.id, BN_KILLFOCUS), SomeWindowParameter);
        EXPECT_EQ(Calls{Call("OnCommand", button.id, SomeWindow(), BN_KILLFOCUS)}, window.calls);

        // What the base does leaves `handled` alone.
        window.claims = false;
        EXPECT_EQ(0, Dispatch(window, WM_COMMAND, MAKEWPARAM(button.id, 0)));
        EXPECT_EQ(1, window.handled);
        window.claims = true;
    }
    for (WORD id : {WORD{0}, WORD{10}, WORD{0x101}}) {
        window.calls.clear();
        Dispatch(window, WM_COMMAND, MAKEWPARAM(id, 0));
        EXPECT_EQ(Calls{Call("OnCommand", id, 0, 0)}, window.calls);
    }
}

TEST(MessageDispatch, ACommandIsLeftWhenOneOfItsHandlersClearsHandled) {
    struct Leaving : RecordingWindow {
        void OnOK(int32_t) override { handled = 0; }
    } window;
    window.Make();
    CountedDefault processing;
    EXPECT_EQ(DefaultResult, Dispatch(window, WM_COMMAND, IDOK));
    EXPECT_EQ(Calls{Call("OnCommand", IDOK, 0, 0)}, Calls{window.calls.back()});
    EXPECT_EQ(1, CountedDefault::calls);
}

TEST(MessageDispatch, ASystemCommandRunsByDefaultWhateverItsHandlerDoes) {
    RecordingWindow window;
    window.Make();
    window.Send(WM_SYSCOMMAND, SC_MAXIMIZE | 2);
    EXPECT_TRUE(window.IsZoomed());
}

TEST(MessageDispatch, PaintingThatIsClaimedStillValidatesByDefault) {
    struct Claiming : RecordingWindow {
        void OnEraseBackground(HDC) override { handled = 1; }
    } window;
    window.Make(L"", WS_POPUP | WS_VISIBLE);
    window.calls.clear();
    InvalidateRect(window.hwnd, nullptr, TRUE);
    ASSERT_TRUE(GetUpdateRect(window.hwnd, nullptr, FALSE));
    window.Send(WM_PAINT);
    EXPECT_EQ(Calls{Call("OnPaint", 1)}, window.calls);
    EXPECT_FALSE(GetUpdateRect(window.hwnd, nullptr, FALSE));
}

TEST(MessageDispatch, AClaimedEraseTellsTheSenderSo) {
    RecordingWindow window;
    window.Make();
    EXPECT_EQ(1, window.Send(WM_ERASEBKGND, 0));
    window.claims = false;
    EXPECT_EQ(0, window.Send(WM_ERASEBKGND, 0)); // no brush by default
}

TEST(MessageDispatch, AnUnboundObjectGetsNothing) {
    struct Hooked : RecordingWindow {
        LRESULT OnMessage(HWND, UINT, WPARAM, LPARAM, int32_t*) override {
            calls.emplace_back("OnMessage");
            return 1;
        }
    } window;
    window.handled = 5;
    CountedDefault processing;
    EXPECT_EQ(0, DispatchToObject(window, {SomeWindow(), WM_CLOSE, 0, 0}));
    EXPECT_EQ(0, window.handled);
    EXPECT_EQ(Calls{}, window.calls);
    EXPECT_EQ(0, CountedDefault::calls);
}

namespace {
// A hook that sees all, and claims one message with a result.
struct Hook {
    UINT claimed = 0;
    LRESULT result = 0;
    int32_t handled = 1;
    int32_t found = -1; // *handled as it came
    int count = 0;

    LRESULT Run(UINT message, int32_t* into) {
        ++count;
        found = *into;
        if (message == claimed)
            *into = handled;
        return result;
    }
};

template <typename Base>
struct Hooked : Base {
    Hook hook;
    WindowMessage last = {};

    LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                      int32_t* into) override {
        EXPECT_EQ(&this->handled, into);
        last = {window, message, wParam, lParam};
        return hook.Run(message, into);
    }
};
} // namespace

TEST(MessageDispatch, TheBasesHookClaimsNothing) {
    NWindow object;
    for (int32_t handled : {0, 7}) {
        int32_t into = handled;
        EXPECT_EQ(0, object.OnMessage(SomeWindow(), WM_KEYDOWN, 3, 4, &into));
        EXPECT_EQ(handled, into);
    }
}

TEST(MessageDispatch, TheHookSeesEveryMessageBeforeItsHandler) {
    Hooked<RecordingWindow> window;
    window.Make();
    window.calls.clear();
    window.handled = 1;
    Dispatch(window, WM_KEYDOWN, 3, 4);
    EXPECT_EQ(0, window.hook.found);
    EXPECT_EQ(window.hwnd, window.last.window);
    EXPECT_EQ(static_cast<UINT>(WM_KEYDOWN), window.last.message);
    EXPECT_EQ(3u, window.last.wParam);
    EXPECT_EQ(4, window.last.lParam);
    EXPECT_EQ(Calls{Call("OnKeyDown", 3, 4)}, window.calls);
    const int count = window.hook.count;
    Dispatch(window, WM_APP + 3);
    EXPECT_EQ(count + 1, window.hook.count);
}

TEST(MessageDispatch, AResultOfAHookThatDoesNotClaimIsDropped) {
    Hooked<RecordingWindow> window;
    window.Make();
    window.hook.result = 99;
    EXPECT_EQ(0, Dispatch(window, WM_KEYDOWN, 3, 4));
    CountedDefault processing;
    EXPECT_EQ(DefaultResult, Dispatch(window, WM_APP));
}

TEST(MessageDispatch, AWindowsHookThatClaimsGivesTheResult) {
    Hooked<RecordingWindow> window;
    window.Make();
    window.calls.clear();
    window.hook.claimed = WM_KEYDOWN;
    window.hook.result = -99;
    CountedDefault processing;
    EXPECT_EQ(-99, Dispatch(window, WM_KEYDOWN, 3, 4));
    EXPECT_EQ(Calls{}, window.calls);
    EXPECT_EQ(0, CountedDefault::calls);
}

TEST(MessageDispatch, ADialogsHookThatClaimsGivesTheStoredResultAndHandledAsTheAnswer) {
    Hooked<DialogOfRecords> dialog;
    dialog.calls.clear();
    dialog.hook.claimed = WM_KEYDOWN;
    dialog.hook.result = -99;
    dialog.hook.handled = 7;
    EXPECT_EQ(7, CallDialogProcedure(dialog.hwnd, WM_KEYDOWN, 3, 4));
    EXPECT_EQ(-99, StoredResult(dialog.hwnd));
    EXPECT_EQ(Calls{}, dialog.calls);
    // So it reaches who sent the message.
    EXPECT_EQ(-99, dialog.Send(WM_KEYDOWN, 3, 4));
}

TEST(MessageDispatch, AMessageInsideAHandlerLeavesItsOwnHandled) {
    struct Sending : RecordingWindow {
        void OnKeyDown(uint32_t, uint32_t) override {
            Send(WM_APP);
            EXPECT_EQ(0, handled);
        }
        void OnKeyUp(uint32_t, uint32_t) override {
            Send(WM_APP);
            handled = 1;
        }
    } window;
    window.Make();
    CountedDefault processing;
    EXPECT_EQ(DefaultResult, Dispatch(window, WM_KEYDOWN));
    EXPECT_EQ(0, Dispatch(window, WM_KEYUP));
}

namespace {
struct Timed : RecordingWindow {
    void AddTimer(uint64_t id, int64_t value) {
        NTimerEntry* entry = timers.Add();
        entry->id = id;
        entry->value = value;
    }
};
} // namespace

TEST(MessageDispatch, ATimerBringsItsIdAndItsValue) {
    constexpr uint64_t WideId = 0x123456789ABC;
    Timed window;
    window.Make();
    window.AddTimer(8, 80);
    window.AddTimer(WideId, -5000000000);
    window.AddTimer(WideId, 1);
    window.calls.clear();
    Dispatch(window, WM_TIMER, WideId);
    EXPECT_EQ(Calls{Call("OnTimer", WideId, -5000000000)}, window.calls);
    EXPECT_EQ(1, window.handled);
    EXPECT_EQ(window.timers[1], window.currentTimer);
    window.claims = false;
    Dispatch(window, WM_TIMER, 8);
    EXPECT_EQ(0, window.handled);
}

TEST(MessageDispatch, ATimersHandlerRunsWithTheLockHeldAndMayRemoveTheTimer) {
    struct Removing : Timed {
        bool held = false;
        void OnTimer(uint64_t, int64_t) override {
            held = !IsFree(timerLock);
            NMutexLock again(timerLock);
            timers.RemoveAt(0);
        }
    } window;
    window.Make();
    window.AddTimer(8, 80);
    Dispatch(window, WM_TIMER, 8);
    EXPECT_TRUE(window.held);
    EXPECT_TRUE(IsFree(window.timerLock));
    EXPECT_EQ(0, window.timers.Count());
    EXPECT_EQ(nullptr, window.currentTimer);
}

TEST(MessageDispatch, AnExceptionOfAHandlerEndsInDefaultProcessing) {
    struct Throwing : Timed {
        void OnKeyDown(uint32_t, uint32_t) override { throw std::runtime_error("a key"); }
        void OnTimer(uint64_t, int64_t) override { throw 5; }
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
            if (message == WM_APP)
                throw std::runtime_error("the hook");
            return 0;
        }
    };
    Throwing window;
    window.Make();
    window.AddTimer(8, 80);
    Throwing dialog;
    dialog.ShowDialog(IDD_PLAIN, nullptr, false);
    ASSERT_NE(nullptr, dialog.hwnd);
    dialog.AddTimer(8, 80);
    for (UINT message :
         {static_cast<UINT>(WM_KEYDOWN), static_cast<UINT>(WM_TIMER), static_cast<UINT>(WM_APP)}) {
        CountedDefault processing;
        EXPECT_EQ(DefaultResult, NWindowProc(window.hwnd, message, 8, 0));
        EXPECT_EQ(1, CountedDefault::calls);
        EXPECT_EQ(0, CallDialogProcedure(dialog.hwnd, message, 8, 0));
    }
    EXPECT_TRUE(IsFree(window.timerLock));
    EXPECT_TRUE(IsFree(dialog.timerLock));
}

TEST(MessageDispatch, OtherThreadsMakeAndDestroyWindowsWhileAHandlerRuns) {
    constexpr DWORD LongEnough = 30000;
    struct Waiting : RecordingWindow {
        UniqueKernelHandle done{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
        std::thread other;
        DWORD answer = WAIT_FAILED;

        void OnKeyDown(uint32_t, uint32_t) override {
            other = std::thread([this] {
                {
                    RecordingWindow window;
                    window.Make();
                }
                SetEvent(done.Get());
            });
            answer = WaitForSingleObject(done.Get(), LongEnough);
        }
    } window;
    window.Make();
    window.Send(WM_KEYDOWN);
    window.other.join();
    EXPECT_EQ(WAIT_OBJECT_0, window.answer);
}

TEST(MessageDispatch, AWindowWhoseObjectIsNotInTheRegistryGetsDefaultProcessing) {
    RecordingWindow window;
    window.Make(L"its title");
    window.calls.clear();
    RemoveFromRegistry(&window);
    CountedDefault processing;
    EXPECT_EQ(DefaultResult, NWindowProc(window.hwnd, WM_KEYDOWN, 3, 4));
    EXPECT_EQ(0, CallDialogProcedure(window.hwnd, WM_KEYDOWN, 3, 4));
    EXPECT_EQ(Calls{}, window.calls);
    AddToRegistry(&window);
    NWindowProc(window.hwnd, WM_KEYDOWN, 3, 4);
    EXPECT_EQ(Calls{Call("OnKeyDown", 3, 4)}, window.calls);
}

TEST(MessageDispatch, TheFirstObjectOfAWindowGetsItsMessages) {
    RecordingWindow first;
    first.Make();
    RecordingWindow second;
    second.hwnd = first.hwnd;
    AddToRegistry(&second);
    first.calls.clear();
    first.Send(WM_KEYDOWN, 3, 4);
    EXPECT_EQ(Calls{Call("OnKeyDown", 3, 4)}, first.calls);
    EXPECT_EQ(Calls{}, second.calls);
    RemoveFromRegistry(&second);
    second.hwnd = nullptr;
}
