#include "foundation/unique_handle.h"
#include "toolkit/nsubclassctrl.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <stdexcept>
#include <thread>

namespace {
constexpr UINT Asked = WM_APP + 1;
constexpr UINT Nested = WM_APP + 2;
constexpr LRESULT OwnAnswer = 1000; // and the wParam, by the window itself
constexpr LRESULT OtherAnswer = 77; // by the object

std::function<void()> insideOwnProcedure;
bool proceduresStay = false; // no window's procedure can be replaced

LRESULT CALLBACK OwnProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != Asked && message != Nested)
        return DefWindowProcW(window, message, wParam, lParam);
    if (insideOwnProcedure)
        insideOwnProcedure();
    return OwnAnswer + static_cast<LRESULT>(wParam);
}

// A hidden window that answers Asked and Nested by itself.
class PlainWindow {
public:
    PlainWindow() {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = OwnProcedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"SubclassTest";
        RegisterClassW(&windowClass);
        handle = CreateWindowExW(0, L"SubclassTest", nullptr, WS_POPUP, 0, 0, 10, 10, nullptr,
                                 nullptr, windowClass.hInstance, nullptr);
    }
    ~PlainWindow() { DestroyWindow(handle); }
    PlainWindow(const PlainWindow&) = delete;
    PlainWindow& operator=(const PlainWindow&) = delete;

    LRESULT Ask(WPARAM wParam = 0) const { return SendMessageW(handle, Asked, wParam, 5); }
    LONG_PTR UserData() const { return GetWindowLongPtrW(handle, GWLP_USERDATA); }
    WNDPROC Procedure() const {
        return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(handle, GWLP_WNDPROC));
    }

    HWND handle;
};

class Control : public NSubClassCtrl {
public:
    LRESULT OnSubclassMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              int32_t* handled) override {
        if (message != Asked)
            return NSubClassCtrl::OnSubclassMessage(window, message, wParam, lParam, handled);
        ++asked;
        seenWindow = window;
        seenLParam = lParam;
        handledBefore = *handled;
        *handled = handles;
        if (whenAsked)
            whenAsked();
        return OtherAnswer;
    }

    int asked = 0;
    HWND seenWindow = nullptr;
    LPARAM seenLParam = 0;
    int32_t handledBefore = -1;
    int32_t handles = 0;
    std::function<void()> whenAsked;
};

// Where a virtual operation stands in the table, with the destructor's two
// entries in front.
template <typename Operation>
size_t SlotOf(Operation operation) {
    uintptr_t offsetPlusOne;
    memcpy(&offsetPlusOne, &operation, sizeof(offsetPlusOne));
    return (offsetPlusOne - 1) / sizeof(void*);
}

// Another thread, which binds an object to a window of its own and unbinds it,
// each when it is told to.
class OtherThread {
public:
    OtherThread() = default;
    OtherThread(const OtherThread&) = delete;
    OtherThread& operator=(const OtherThread&) = delete;
    ~OtherThread() {
        SetEvent(mayUnbind_.Get());
        if (thread_.joinable())
            thread_.join();
    }

    // Comes back when Bind is the thread's next step.
    void Bind() {
        thread_ = std::thread([this] {
            PlainWindow window;
            Control control;
            SetEvent(aboutToBind_.Get());
            control.Bind(window.handle);
            SetEvent(bound_.Get());
            Wait(mayUnbind_);
            SetEvent(aboutToUnbind_.Get());
            control.Unbind();
            SetEvent(unbound_.Get());
        });
        EXPECT_TRUE(Wait(aboutToBind_));
    }
    // The same for Unbind.
    void Unbind() {
        SetEvent(mayUnbind_.Get());
        EXPECT_TRUE(Wait(aboutToUnbind_));
    }

    bool IsBoundSoon() const { return Wait(bound_, Soon); }
    bool IsBoundInTheEnd() const { return Wait(bound_); }
    bool IsUnboundSoon() const { return Wait(unbound_, Soon); }
    bool IsUnboundInTheEnd() const { return Wait(unbound_); }

private:
    // In milliseconds: a thread that isn't held up makes its next step within
    // the one, and within the other in any case.
    static constexpr DWORD Soon = 100;
    static constexpr DWORD LongEnough = 30000;

    static UniqueKernelHandle NewEvent() {
        return UniqueKernelHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    }
    static bool Wait(const UniqueKernelHandle& event, DWORD milliseconds = LongEnough) {
        return WaitForSingleObject(event.Get(), milliseconds) == WAIT_OBJECT_0;
    }

    UniqueKernelHandle aboutToBind_ = NewEvent();
    UniqueKernelHandle bound_ = NewEvent();
    UniqueKernelHandle mayUnbind_ = NewEvent();
    UniqueKernelHandle aboutToUnbind_ = NewEvent();
    UniqueKernelHandle unbound_ = NewEvent();
    std::thread thread_;
};
} // namespace

extern "C" {
extern decltype(&::SetWindowLongPtrW) __real___imp_SetWindowLongPtrW;
extern decltype(&::SetWindowLongPtrW) __wrap___imp_SetWindowLongPtrW;
decltype(&::SetWindowLongPtrW) __wrap___imp_SetWindowLongPtrW = [](HWND window, int index,
                                                                   LONG_PTR value) -> LONG_PTR {
    if (index == GWLP_WNDPROC && proceduresStay)
        return 0;
    return __real___imp_SetWindowLongPtrW(window, index, value);
};
}

TEST(NSubClassCtrl, ItsMembersAndOperationsStandInOrder) {
    NSubClassCtrl control;
    const auto offset = [&](const void* member) {
        return static_cast<const char*>(member) - reinterpret_cast<const char*>(&control);
    };
    EXPECT_EQ(8, offset(&control.previousProc));
    EXPECT_EQ(16, offset(&control.boundWindow));
    EXPECT_EQ(2u, SlotOf(&NSubClassCtrl::OnSubclassMessage));
}

TEST(NSubClassCtrl, ByDefaultItLeavesEachMessageToTheWindow) {
    PlainWindow window;
    NSubClassCtrl control;
    int32_t handled = 0;
    EXPECT_EQ(0, control.OnSubclassMessage(window.handle, Asked, 1, 2, &handled));
    EXPECT_EQ(0, handled);
    control.Bind(window.handle);
    EXPECT_EQ(OwnAnswer + 3, window.Ask(3));
}

TEST(NSubClassCtrl, BindPutsTheObjectAndTheProcedureIntoTheWindow) {
    PlainWindow window;
    Control control;
    control.Bind(window.handle);
    EXPECT_EQ(window.handle, control.boundWindow);
    EXPECT_EQ(OwnProcedure, control.previousProc);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(&control), window.UserData());
    EXPECT_NE(OwnProcedure, window.Procedure());
}

TEST(NSubClassCtrl, AMessageItDoesNotHandleGoesOnToTheWindow) {
    PlainWindow window;
    Control control;
    control.Bind(window.handle);
    EXPECT_EQ(OwnAnswer + 4, window.Ask(4));
    EXPECT_EQ(1, control.asked);
    EXPECT_EQ(window.handle, control.seenWindow);
    EXPECT_EQ(5, control.seenLParam);
    EXPECT_EQ(0, control.handledBefore);
}

TEST(NSubClassCtrl, AMessageItHandlesHasItsResult) {
    PlainWindow window;
    Control control;
    control.handles = 1;
    control.Bind(window.handle);
    bool reachedTheWindow = false;
    insideOwnProcedure = [&] { reachedTheWindow = true; };
    EXPECT_EQ(OtherAnswer, window.Ask());
    insideOwnProcedure = nullptr;
    EXPECT_FALSE(reachedTheWindow);
}

TEST(NSubClassCtrl, UnbindGivesTheWindowItsProcedureBack) {
    PlainWindow window;
    Control control;
    control.Bind(window.handle);
    control.Unbind();
    EXPECT_EQ(nullptr, control.boundWindow);
    EXPECT_EQ(0, window.UserData());
    EXPECT_EQ(OwnProcedure, window.Procedure());
    EXPECT_EQ(OwnAnswer, window.Ask());
    EXPECT_EQ(0, control.asked);
    control.Unbind();
}

TEST(NSubClassCtrl, ItsEndUnbinds) {
    PlainWindow window;
    {
        Control control;
        control.Bind(window.handle);
    }
    EXPECT_EQ(0, window.UserData());
    EXPECT_EQ(OwnProcedure, window.Procedure());
}

TEST(NSubClassCtrl, BindingAnotherWindowLeavesTheFirst) {
    PlainWindow first;
    PlainWindow second;
    Control control;
    control.Bind(first.handle);
    control.Bind(second.handle);
    EXPECT_EQ(second.handle, control.boundWindow);
    EXPECT_EQ(OwnProcedure, first.Procedure());
    EXPECT_EQ(0, first.UserData());
    first.Ask();
    EXPECT_EQ(0, control.asked);
    second.Ask();
    EXPECT_EQ(1, control.asked);
}

TEST(NSubClassCtrl, BindingNullUnbinds) {
    PlainWindow window;
    Control control;
    control.Bind(window.handle);
    control.Bind(nullptr);
    EXPECT_EQ(nullptr, control.boundWindow);
    EXPECT_EQ(OwnProcedure, window.Procedure());
}

TEST(NSubClassCtrl, AWindowWhoseProcedureCannotBeReplacedIsNotBound) {
    Control control;
    control.Bind(GetDesktopWindow());
    EXPECT_EQ(nullptr, control.boundWindow);
    HWND gone = nullptr;
    {
        PlainWindow window;
        gone = window.handle;
    }
    control.Bind(gone);
    EXPECT_EQ(nullptr, control.boundWindow);
}

TEST(NSubClassCtrl, ABindThatFailsTakesTheObjectOutOfTheWindow) {
    PlainWindow window;
    Control control;
    proceduresStay = true;
    control.Bind(window.handle);
    proceduresStay = false;
    EXPECT_EQ(nullptr, control.boundWindow);
    EXPECT_EQ(0, window.UserData());
    EXPECT_EQ(OwnAnswer + 2, window.Ask(2));
    EXPECT_EQ(0, control.asked);
}

TEST(NSubClassCtrl, WithoutAnObjectTheResultIsZero) {
    PlainWindow window;
    Control control;
    control.Bind(window.handle);
    SetWindowLongPtrW(window.handle, GWLP_USERDATA, 0);
    EXPECT_EQ(0, window.Ask(3));
    EXPECT_EQ(0, control.asked);
}

TEST(NSubClassCtrl, WithoutAPreviousProcedureTheObjectIsNotAsked) {
    PlainWindow window;
    Control control;
    control.Bind(window.handle);
    control.previousProc = nullptr;
    EXPECT_EQ(0, window.Ask(3));
    EXPECT_EQ(0, control.asked);
    control.previousProc = OwnProcedure;
}

TEST(NSubClassCtrl, AHandlerMayUnbindAndTheWindowStillAnswers) {
    PlainWindow window;
    Control control;
    control.whenAsked = [&] { control.Unbind(); };
    control.Bind(window.handle);
    EXPECT_EQ(OwnAnswer + 6, window.Ask(6));
    EXPECT_EQ(OwnProcedure, window.Procedure());
}

TEST(NSubClassCtrl, AHandlerMaySendMessagesToItsWindow) {
    PlainWindow window;
    Control control;
    LRESULT nested = 0;
    control.whenAsked = [&] { nested = SendMessageW(window.handle, Nested, 8, 0); };
    control.Bind(window.handle);
    EXPECT_EQ(OwnAnswer, window.Ask());
    EXPECT_EQ(OwnAnswer + 8, nested);
}

TEST(NSubClassCtrl, AWindowThatHasAnObjectIsNotBoundToAnother) {
    PlainWindow window;
    Control first;
    Control second;
    first.Bind(window.handle);
    second.Bind(window.handle);
    EXPECT_EQ(nullptr, second.boundWindow);
    EXPECT_EQ(nullptr, second.previousProc);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(&first), window.UserData());
    EXPECT_EQ(OwnAnswer + 3, window.Ask(3));
    EXPECT_EQ(1, first.asked);
    EXPECT_EQ(0, second.asked);
    second.Unbind();
    EXPECT_EQ(OwnAnswer + 4, window.Ask(4));
    EXPECT_EQ(2, first.asked);
    // Free again, it may have the other.
    first.Unbind();
    second.Bind(window.handle);
    EXPECT_EQ(window.handle, second.boundWindow);
    EXPECT_EQ(OwnProcedure, second.previousProc);
    EXPECT_EQ(OwnAnswer + 5, window.Ask(5));
    EXPECT_EQ(1, second.asked);
}

TEST(NSubClassCtrl, BindingItsWindowAgainChangesNothing) {
    PlainWindow window;
    Control control;
    control.Bind(window.handle);
    control.Bind(window.handle);
    EXPECT_EQ(window.handle, control.boundWindow);
    EXPECT_EQ(OwnProcedure, control.previousProc);
    EXPECT_EQ(OwnAnswer + 3, window.Ask(3));
    EXPECT_EQ(1, control.asked);
}

TEST(NSubClassCtrl, AnExceptionStaysInsideAndLeavesTheMessageToTheWindow) {
    PlainWindow window;
    Control control;
    control.handles = 1; // was set before the exception
    control.whenAsked = [] { throw std::runtime_error("of a handler"); };
    control.Bind(window.handle);
    EXPECT_EQ(OwnAnswer + 3, window.Ask(3));
    OtherThread other; // the lock is free again
    other.Bind();
    EXPECT_TRUE(other.IsBoundInTheEnd());
}

TEST(NSubClassCtrl, AWindowWhoseObjectThrowsAtAPaintIsPaintedOnce) {
    struct Throwing : NSubClassCtrl {
        int paints = 0;
        LRESULT OnSubclassMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
            if (message == WM_PAINT) {
                ++paints;
                throw 5;
            }
            return 0;
        }
    } control;
    PlainWindow window;
    ShowWindow(window.handle, SW_SHOWNA);
    UpdateWindow(window.handle);
    control.Bind(window.handle);
    InvalidateRect(window.handle, nullptr, FALSE);
    ASSERT_TRUE(GetUpdateRect(window.handle, nullptr, FALSE));
    UpdateWindow(window.handle);
    EXPECT_EQ(1, control.paints);
    EXPECT_FALSE(GetUpdateRect(window.handle, nullptr, FALSE));
}

TEST(NSubClassCtrl, TheLockIsHeldThroughTheHandler) {
    PlainWindow window;
    Control control;
    OtherThread other;
    bool boundMeanwhile = true;
    control.whenAsked = [&] {
        other.Bind();
        boundMeanwhile = other.IsBoundSoon();
    };
    control.Bind(window.handle);
    window.Ask();
    EXPECT_FALSE(boundMeanwhile);
    EXPECT_TRUE(other.IsBoundInTheEnd());
}

TEST(NSubClassCtrl, TheLockIsHeldThroughTheWindowsOwnProcedure) {
    PlainWindow window;
    Control control;
    OtherThread other;
    bool boundMeanwhile = true;
    control.Bind(window.handle);
    insideOwnProcedure = [&] {
        other.Bind();
        boundMeanwhile = other.IsBoundSoon();
    };
    window.Ask();
    insideOwnProcedure = nullptr;
    EXPECT_FALSE(boundMeanwhile);
    EXPECT_TRUE(other.IsBoundInTheEnd());
}

TEST(NSubClassCtrl, UnbindingTakesTheLockToo) {
    PlainWindow window;
    Control control;
    OtherThread other;
    other.Bind();
    ASSERT_TRUE(other.IsBoundInTheEnd());
    bool unboundMeanwhile = true;
    control.whenAsked = [&] {
        other.Unbind();
        unboundMeanwhile = other.IsUnboundSoon();
    };
    control.Bind(window.handle);
    window.Ask();
    EXPECT_FALSE(unboundMeanwhile);
    EXPECT_TRUE(other.IsUnboundInTheEnd());
}
