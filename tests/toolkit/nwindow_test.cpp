#include "tests/support/dialog_hook.h"
#include "tests/support/leak_counters.h"
#include "tests/toolkit/recording_window.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/watched_calls.h"
#include "tests/toolkit/window_facts.h"
#include "toolkit/nthread.h"
#include "toolkit/nwindow.h"
#include "toolkit/window_procedures.h"
#include "toolkit/window_registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>

namespace {
std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

bool ClassExists(const wchar_t* name) {
    WNDCLASSEXW record = {};
    record.cbSize = sizeof(record);
    return GetClassInfoExW(GetModuleHandleW(nullptr), name, &record);
}

std::wstring NextClassName() {
    return L"NWnd" + std::to_wstring(classCounter);
}

int TimesRegistered(const NWindow& object) {
    int times = 0;
    for (int i = 0; i < windowRegistry.Count; ++i)
        times += windowRegistry.At(i) == &object;
    return times;
}

bool IsRegistered(const NWindow& object) {
    return TimesRegistered(object) > 0;
}

// The place of an operation in the table of virtual operations, by the two
// words of a pointer to it: 1 more than its distance in bytes.
template <typename Operation>
size_t SlotOf(Operation operation) {
    uint64_t words[2] = {};
    static_assert(sizeof(operation) == sizeof(words));
    memcpy(words, &operation, sizeof(words));
    return (words[0] - 1) / sizeof(void*);
}

size_t OffsetIn(const NWindow& object, const void* member) {
    return static_cast<size_t>(static_cast<const char*>(member) -
                               reinterpret_cast<const char*>(&object));
}

} // namespace

TEST(NWindow, ItsMembersStandInTheirOrder) {
    NWindow object;
    EXPECT_EQ(8u, OffsetIn(object, &object.handled));
    EXPECT_EQ(16u, OffsetIn(object, &object.hwnd));
    EXPECT_EQ(24u, OffsetIn(object, &object.isDialog));
    EXPECT_EQ(32u, OffsetIn(object, &object.cursor));
    EXPECT_EQ(40u, OffsetIn(object, &object.bigIcon));
    EXPECT_EQ(48u, OffsetIn(object, &object.smallIcon));
    EXPECT_EQ(56u, OffsetIn(object, &object.className));
    const size_t timers = 56 + sizeof(NString);
    EXPECT_EQ(timers, OffsetIn(object, &object.timers));
    const size_t current = timers + sizeof(NKeyedList<NTimerEntry>);
    EXPECT_EQ(current, OffsetIn(object, &object.currentTimer));
    EXPECT_EQ(current + 8, OffsetIn(object, &object.timerLock));
    EXPECT_EQ(current + 8 + sizeof(NMutex), sizeof(NWindow));
    EXPECT_EQ(4u, sizeof(object.handled));
    EXPECT_EQ(1u, sizeof(object.isDialog));
    EXPECT_EQ(0u, offsetof(NTimerEntry, id));
    EXPECT_EQ(8u, offsetof(NTimerEntry, value));
    EXPECT_EQ(16u, sizeof(NTimerEntry));
}

TEST(NWindow, ItsVirtualOperationsStandInTheirSlots) {
    // The destructor takes two entries of the table, 0 and 1, and is slot 1.
    EXPECT_EQ(2u, SlotOf(&NWindow::OnActivate));
    EXPECT_EQ(3u, SlotOf(&NWindow::OnClose));
    EXPECT_EQ(4u, SlotOf(&NWindow::OnContextMenu));
    EXPECT_EQ(5u, SlotOf(&NWindow::OnCommand));
    EXPECT_EQ(6u, SlotOf(&NWindow::OnCreate));
    EXPECT_EQ(7u, SlotOf(&NWindow::OnDestroy));
    EXPECT_EQ(8u, SlotOf(&NWindow::OnDeactivate));
    EXPECT_EQ(9u, SlotOf(&NWindow::OnDrawItem));
    EXPECT_EQ(10u, SlotOf(&NWindow::OnEraseBackground));
    EXPECT_EQ(11u, SlotOf(&NWindow::OnHide));
    EXPECT_EQ(12u, SlotOf(&NWindow::OnKeyDown));
    EXPECT_EQ(13u, SlotOf(&NWindow::OnKeyUp));
    EXPECT_EQ(14u, SlotOf(&NWindow::OnChar));
    EXPECT_EQ(15u, SlotOf(&NWindow::OnMouseDown));
    EXPECT_EQ(16u, SlotOf(&NWindow::OnMouseUp));
    EXPECT_EQ(17u, SlotOf(&NWindow::OnMouseMove));
    EXPECT_EQ(18u, SlotOf(&NWindow::OnMouseWheel));
    EXPECT_EQ(19u, SlotOf(&NWindow::OnMove));
    EXPECT_EQ(20u, SlotOf(&NWindow::OnNotify));
    EXPECT_EQ(21u, SlotOf(&NWindow::OnPaint));
    EXPECT_EQ(22u, SlotOf(&NWindow::OnShow));
    EXPECT_EQ(23u, SlotOf(&NWindow::OnSize));
    EXPECT_EQ(24u, SlotOf(&NWindow::OnSysCommand));
    EXPECT_EQ(25u, SlotOf(&NWindow::OnTimer));
    EXPECT_EQ(26u, SlotOf(&NWindow::OnMessage));
    EXPECT_EQ(27u, SlotOf(&NWindow::OnAbort));
    EXPECT_EQ(28u, SlotOf(&NWindow::OnCancel));
    EXPECT_EQ(29u, SlotOf(&NWindow::OnCloseButton));
    EXPECT_EQ(30u, SlotOf(&NWindow::OnHelp));
    EXPECT_EQ(31u, SlotOf(&NWindow::OnIgnore));
    EXPECT_EQ(32u, SlotOf(&NWindow::OnNo));
    EXPECT_EQ(33u, SlotOf(&NWindow::OnOK));
    EXPECT_EQ(34u, SlotOf(&NWindow::OnRetry));
    EXPECT_EQ(35u, SlotOf(&NWindow::OnYes));
}

TEST(NWindow, ADerivedClassesOwnOperationsFollowTheBases) {
    struct Derived : NWindow {
        virtual void Own() {}
    };
    EXPECT_EQ(36u, SlotOf(&Derived::Own));
}

TEST(NWindow, StartsUnbound) {
    NWindow object;
    EXPECT_EQ(0, object.handled);
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_EQ(0, object.isDialog);
    EXPECT_EQ(nullptr, object.cursor);
    EXPECT_EQ(nullptr, object.bigIcon);
    EXPECT_EQ(nullptr, object.smallIcon);
    EXPECT_TRUE(object.className.IsEmpty());
    EXPECT_EQ(0, object.timers.Count());
    EXPECT_EQ(nullptr, object.currentTimer);
    EXPECT_FALSE(IsRegistered(object));
}

TEST(NWindow, EachWindowHasAClassOfItsOwn) {
    const std::wstring firstName = NextClassName();
    NWindow first;
    first.Create(L"", Place, WS_POPUP);
    const std::wstring secondName = NextClassName();
    NWindow second;
    second.Create(L"", Place, WS_POPUP);
    EXPECT_EQ(firstName, ClassOf(first.hwnd));
    EXPECT_EQ(secondName, ClassOf(second.hwnd));
    EXPECT_NE(firstName, secondName);
    EXPECT_EQ(firstName, first.className.Text);
    EXPECT_TRUE(ClassExists(firstName.c_str()));
    first.Destroy();
    EXPECT_TRUE(first.className.IsEmpty());
    EXPECT_FALSE(ClassExists(firstName.c_str()));
    EXPECT_TRUE(ClassExists(secondName.c_str()));
}

TEST(NWindow, TheClassIsRegisteredWithLittle) {
    static WNDCLASSEXW asked;
    WatchedCalls watched;
    __wrap___imp_RegisterClassExW = [](const WNDCLASSEXW* record) {
        asked = *record;
        return __real___imp_RegisterClassExW(record);
    };
    NWindow object;
    object.Create(L"", Place, WS_POPUP, 0, nullptr, CS_OWNDC | CS_DBLCLKS);
    ASSERT_NE(nullptr, object.hwnd);
    EXPECT_EQ(sizeof(WNDCLASSEXW), asked.cbSize);
    EXPECT_EQ(static_cast<UINT>(CS_OWNDC | CS_DBLCLKS), asked.style);
    EXPECT_EQ(&NWindowProc, asked.lpfnWndProc);
    EXPECT_EQ(GetModuleHandleW(nullptr), asked.hInstance);
    EXPECT_EQ(LoadIconW(nullptr, IDI_APPLICATION), asked.hIcon);
    EXPECT_EQ(nullptr, asked.hCursor);
    EXPECT_EQ(nullptr, asked.hbrBackground);
    EXPECT_EQ(nullptr, asked.lpszMenuName);
    EXPECT_EQ(nullptr, asked.hIconSm);
    EXPECT_EQ(0, asked.cbClsExtra);
    EXPECT_EQ(0, asked.cbWndExtra);
}

TEST(NWindow, CreateMakesTheWindowAsItIsTold) {
    HMENU menu = CreateMenu();
    AppendMenuW(menu, MF_STRING, 5, L"Item");
    NWindow owner;
    owner.Create(L"", Place, WS_POPUP);
    NWindow object;
    object.Create(L"A title", {30, 40, 330, 240}, WS_OVERLAPPEDWINDOW, WS_EX_TOOLWINDOW, owner.hwnd,
                  0, nullptr, menu);
    const RECT expected = {30, 40, 330, 240};
    EXPECT_TRUE(expected == object.WindowRect());
    EXPECT_EQ(owner.hwnd, GetWindow(object.hwnd, GW_OWNER));
    EXPECT_EQ(menu, GetMenu(object.hwnd));
    wchar_t title[20] = {};
    // The title came with WM_NCCREATE, before the object.
    GetWindowTextW(object.hwnd, title, 20);
    EXPECT_STREQ(L"A title", title);
    const LONG_PTR style = GetWindowLongPtrW(object.hwnd, GWL_STYLE);
    EXPECT_EQ(WS_OVERLAPPEDWINDOW, style & WS_OVERLAPPEDWINDOW);
    EXPECT_FALSE(style & WS_VISIBLE);
    EXPECT_TRUE(GetWindowLongPtrW(object.hwnd, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(GetModuleHandleW(nullptr)),
              GetWindowLongPtrW(object.hwnd, GWLP_HINSTANCE));
}

TEST(NWindow, CreateMakesAChildWindow) {
    NWindow parent;
    parent.Create(L"", Place, WS_POPUP);
    NWindow child;
    child.Create(L"", {5, 6, 25, 36}, WS_CHILD, 0, parent.hwnd);
    EXPECT_EQ(parent.hwnd, GetParent(child.hwnd));
    EXPECT_EQ(20, child.Width());
    EXPECT_EQ(30, child.Height());
}

TEST(NWindow, TheUsualPlaceIsAnEdgeLikeAnyOther) {
    NWindow object;
    object.Create(L"", {CW_USEDEFAULT, 0, CW_USEDEFAULT + 300, 200}, WS_OVERLAPPEDWINDOW);
    ASSERT_NE(nullptr, object.hwnd);
    EXPECT_EQ(300, object.Width());
    EXPECT_EQ(200, object.Height());
}

TEST(NWindow, CreationBindsTheObject) {
    struct Looking : RecordingWindow {
        bool bound = false;
        void OnCreate(int32_t one) override {
            RecordingWindow::OnCreate(one);
            bound = hwnd && IsWindow(hwnd) && IsRegistered(*this);
        }
    } object;
    object.isDialog = 1;
    object.Make();
    EXPECT_TRUE(object.bound);
    EXPECT_EQ(0, object.isDialog);
    EXPECT_EQ(Call("OnCreate", 1), object.calls.at(0));
    EXPECT_TRUE(IsRegistered(object));
    object.Destroy();
    EXPECT_FALSE(IsRegistered(object));
    EXPECT_EQ(nullptr, object.hwnd);
}

TEST(NWindow, NoMessageBeforeBindingReachesTheObject) {
    struct Hooked : RecordingWindow {
        std::vector<UINT> messages;
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
            messages.push_back(message);
            return 0;
        }
    } object;
    object.Make();
    ASSERT_FALSE(object.messages.empty());
    EXPECT_EQ(static_cast<UINT>(WM_CREATE), object.messages[0]);
    const auto none = object.messages.end();
    EXPECT_EQ(none, std::find(object.messages.begin(), none, WM_NCCREATE));
    // The platform's own first messages get default processing.
    EXPECT_EQ(WS_CAPTION, GetWindowLongPtrW(object.hwnd, GWL_STYLE) & WS_CAPTION);
}

TEST(NWindow, NoMessageBeforeBindingReachesADialogsObject) {
    struct Hooked : RecordingWindow {
        std::vector<UINT> messages;
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
            messages.push_back(message);
            return 0;
        }
    } object;
    object.ShowDialog(IDD_PLAIN, nullptr, false);
    ASSERT_FALSE(object.messages.empty());
    EXPECT_EQ(static_cast<UINT>(WM_INITDIALOG), object.messages[0]);
    const auto none = object.messages.end();
    EXPECT_EQ(none, std::find(object.messages.begin(), none, WM_SETFONT));
    // Which did come.
    EXPECT_NE(0, object.Send(WM_GETFONT));
}

TEST(NWindow, AnObjectIsNotListedAgainWhenItsCreationIsTold) {
    RecordingWindow object;
    object.Make();
    object.calls.clear();
    CREATESTRUCTW creation = {};
    creation.lpCreateParams = static_cast<NWindow*>(&object);
    NWindowProc(object.hwnd, WM_CREATE, 0, reinterpret_cast<LPARAM>(&creation));
    EXPECT_EQ(Calls{Call("OnCreate", 1)}, object.calls);
    EXPECT_EQ(1, TimesRegistered(object));

    RecordingWindow dialog;
    dialog.ShowDialog(IDD_PLAIN, nullptr, false);
    dialog.calls.clear();
    NDialogProc(dialog.hwnd, WM_INITDIALOG, 0,
                reinterpret_cast<LPARAM>(static_cast<NWindow*>(&dialog)));
    EXPECT_EQ(Calls{Call("OnCreate", 1)}, dialog.calls);
    EXPECT_EQ(1, TimesRegistered(dialog));
}

TEST(NWindow, ACreationWithoutARecordBindsNothing) {
    const int before = windowRegistry.Count;
    EXPECT_EQ(0, NWindowProc(GetDesktopWindow(), WM_CREATE, 0, 0));
    EXPECT_EQ(0, NDialogProc(GetDesktopWindow(), WM_INITDIALOG, 0, 0));
    EXPECT_EQ(before, windowRegistry.Count);
}

TEST(NWindow, TheRegistryHasAnObjectOnce) {
    NWindow first;
    NWindow second;
    const int before = windowRegistry.Count;
    AddToRegistry(&first);
    AddToRegistry(&second);
    AddToRegistry(&first);
    ASSERT_EQ(before + 2, windowRegistry.Count);
    EXPECT_EQ(&first, windowRegistry.At(before));
    EXPECT_EQ(&second, windowRegistry.At(before + 1));
    RemoveFromRegistry(&first);
    EXPECT_EQ(1, TimesRegistered(second));
    EXPECT_EQ(before + 1, windowRegistry.Count);
    RemoveFromRegistry(&first); // isn't there any more
    RemoveFromRegistry(&second);
    EXPECT_EQ(before, windowRegistry.Count);
}

// An object that had a window of this handle before, and still names it, is
// found first.
TEST(NWindow, ACreationThatBringsAnotherObjectListsItBehindTheFirst) {
    RecordingWindow first;
    RecordingWindow second;
    RecordingWindow third;
    first.Make();
    first.calls.clear();
    const HWND window = first.hwnd;

    CREATESTRUCTW creation = {};
    creation.lpCreateParams = static_cast<NWindow*>(&second);
    NWindowProc(window, WM_CREATE, 0, reinterpret_cast<LPARAM>(&creation));
    EXPECT_EQ(window, second.hwnd);
    EXPECT_EQ(0, second.isDialog);
    EXPECT_EQ(1, TimesRegistered(second));

    NDialogProc(window, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(static_cast<NWindow*>(&third)));
    EXPECT_EQ(window, third.hwnd);
    EXPECT_EQ(1, third.isDialog);
    EXPECT_EQ(1, TimesRegistered(third));

    EXPECT_EQ(Calls({Call("OnCreate", 1), Call("OnCreate", 1)}), first.calls);
    EXPECT_TRUE(second.calls.empty());
    EXPECT_TRUE(third.calls.empty());

    // The window is the first one's.
    for (RecordingWindow* other : {&second, &third}) {
        RemoveFromRegistry(other);
        other->hwnd = nullptr;
    }
}

TEST(NWindow, AWindowOfTheClassWithoutAnObjectGetsDefaultProcessing) {
    NWindow object;
    object.Create(L"", Place, WS_POPUP);
    HWND other = CreateWindowExW(0, object.className.Text, L"Text", WS_POPUP, 0, 0, 10, 10, nullptr,
                                 nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(nullptr, other);
    wchar_t text[20] = {};
    GetWindowTextW(other, text, 20);
    EXPECT_STREQ(L"Text", text);
    DestroyWindow(other);
}

TEST(NWindow, AGivenClassIsUsedAndNoneIsRegistered) {
    const uint32_t before = classCounter;
    RecordingWindow object;
    object.Create(L"", Place, WS_POPUP, 0, nullptr, 0, L"STATIC");
    ASSERT_NE(nullptr, object.hwnd);
    const HWND window = object.hwnd;
    EXPECT_EQ(L"Static", ClassOf(window));
    EXPECT_TRUE(object.className.IsEmpty());
    EXPECT_EQ(before, classCounter);
    // Its messages go to that class.
    object.Send(WM_KEYDOWN, 3, 4);
    EXPECT_EQ(Calls{}, object.calls);
    object.Destroy();
    EXPECT_FALSE(IsWindow(window));
}

TEST(NWindow, AWindowOfAGivenClassIsNoDialogAlsoAfterOne) {
    NWindow object;
    object.ShowDialog(IDD_PLAIN, nullptr, false);
    ASSERT_EQ(1, object.isDialog);
    object.Create(L"", Place, WS_POPUP, 0, nullptr, 0, L"STATIC");
    EXPECT_NE(nullptr, object.hwnd);
    EXPECT_EQ(0, object.isDialog);
}

TEST(NWindow, AGivenClassOfTheToolkitsBindsTheObject) {
    NWindow first;
    first.Create(L"", Place, WS_POPUP);
    RecordingWindow second;
    second.Create(L"", Place, WS_POPUP, 0, nullptr, 0, first.className.Text);
    EXPECT_TRUE(second.className.IsEmpty());
    EXPECT_TRUE(IsRegistered(second));
    EXPECT_TRUE(Contains(second.calls, Call("OnCreate", 1)));
    second.Destroy();
    EXPECT_TRUE(ClassExists(first.className.Text));
}

TEST(NWindow, WithoutItsClassThereIsNoWindow) {
    const std::wstring taken = NextClassName();
    WNDCLASSEXW record = {};
    record.cbSize = sizeof(record);
    record.lpfnWndProc = DefWindowProcW;
    record.hInstance = GetModuleHandleW(nullptr);
    record.lpszClassName = taken.c_str();
    ASSERT_TRUE(RegisterClassExW(&record));
    RecordingWindow object;
    object.Make();
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_TRUE(object.className.IsEmpty());
    EXPECT_EQ(Calls{}, object.calls);
    object.Destroy();
    EXPECT_TRUE(ClassExists(taken.c_str())); // it isn't this object's
    UnregisterClassW(taken.c_str(), record.hInstance);
    // The number has been used up.
    object.Make();
    EXPECT_NE(nullptr, object.hwnd);
}

TEST(NWindow, AFailedCreationLeavesNoWindow) {
    NWindow object;
    object.Create(L"", Place, WS_CHILD); // without a parent
    EXPECT_EQ(nullptr, object.hwnd);
    const std::wstring name = object.className.Text;
    object.Destroy();
    EXPECT_FALSE(ClassExists(name.c_str()));
    object.Create(L"", Place, WS_POPUP, 0, nullptr, 0, L"NoSuchClassOfWindows");
    EXPECT_EQ(nullptr, object.hwnd);
}

TEST(NWindow, ACreationThatTheHookRefusesLeavesNoWindow) {
    struct Refusing : RecordingWindow {
        bool refuses = true;
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t* into) override {
            if (refuses && message == WM_CREATE)
                *into = 1;
            return -1;
        }
    } object;
    object.Make();
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(IsRegistered(object));
    NWindow owner;
    owner.Create(L"", Place, WS_POPUP);
    object.Create(L"", Place, WS_POPUP, 0, nullptr, 0, owner.className.Text);
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(IsRegistered(object));
    object.refuses = false;
    object.Make();
    EXPECT_NE(nullptr, object.hwnd);
    object.Destroy();
    EXPECT_FALSE(IsRegistered(object));
}

TEST(NWindow, AHandlerMayDestroyTheWindowWhileItIsMade) {
    struct Short : RecordingWindow {
        void OnShow(int32_t) override { Destroy(); }
    } object;
    object.Make(L"", WS_POPUP | WS_VISIBLE);
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(IsRegistered(object));
    NWindow owner;
    owner.Create(L"", Place, WS_POPUP);
    object.Create(L"", Place, WS_POPUP | WS_VISIBLE, 0, nullptr, 0, owner.className.Text);
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(IsRegistered(object));
}

TEST(NWindow, AHandlerMayMakeAnotherWindowWhileOneIsMade) {
    struct Twice : RecordingWindow {
        HWND first = nullptr;
        HWND second = nullptr;
        void OnCreate(int32_t) override {
            if (first)
                return;
            first = hwnd;
            Make();
            second = hwnd;
        }
    } object;
    object.Make();
    EXPECT_NE(nullptr, object.second);
    EXPECT_EQ(object.second, object.hwnd);
    EXPECT_FALSE(IsWindow(object.first));
    EXPECT_TRUE(IsWindow(object.hwnd));
    EXPECT_TRUE(IsRegistered(object));
    EXPECT_TRUE(ClassExists(object.className.Text));
}

TEST(NWindow, ASecondCreateEndsTheFirstWindowAndItsClassFirst) {
    struct Twice : RecordingWindow {
        HWND first = nullptr;
        std::wstring firstClass;
        bool firstWasGone = false;
        void OnCreate(int32_t) override {
            if (first)
                firstWasGone = !IsWindow(first) && !ClassExists(firstClass.c_str());
        }
    } object;
    object.Make();
    object.first = object.hwnd;
    object.firstClass = object.className.Text;
    object.Make();
    EXPECT_TRUE(object.firstWasGone);
    EXPECT_NE(object.firstClass, object.className.Text);
    EXPECT_TRUE(IsWindow(object.hwnd));
    // A dialog does so too.
    const HWND second = object.hwnd;
    const std::wstring secondClass = object.className.Text;
    object.ShowDialog(IDD_PLAIN, nullptr, false);
    EXPECT_FALSE(IsWindow(second));
    EXPECT_FALSE(ClassExists(secondClass.c_str()));
    EXPECT_EQ(1, object.isDialog);
    // And a window after a dialog.
    const HWND dialog = object.hwnd;
    object.Make();
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(0, object.isDialog);
}

namespace {
// A window that writes down what is still there when each step of its
// teardown runs.
class Teardown : public RecordingWindow {
public:
    Teardown() { current = this; }
    ~Teardown() override {
        Destroy();
        current = nullptr;
    }

    void AddTimer(uint64_t id) {
        timers.Add()->id = id;
        SetTimer(hwnd, id, 60000, nullptr);
    }

    void OnHide(int32_t) override { Step("hide"); }
    void OnDestroy(int32_t) override { Step("OnDestroy"); }

    void Step(const std::string& name) {
        std::string left = name + ":";
        left += hwnd && IsWindow(hwnd) ? " window" : "";
        left += timers.Count() ? " timers" : "";
        left += !className.IsEmpty() && ClassExists(className.Text) ? " class" : "";
        left += IsRegistered(*this) ? " registry" : "";
        left += timerLock.IsLocked() ? " locked" : "";
        steps.push_back(left);
    }

    Calls steps;
    static inline Teardown* current;
};

void WatchTeardown() {
    __wrap___imp_KillTimer = [](HWND window, UINT_PTR id) -> BOOL {
        Teardown::current->Step("KillTimer " + std::to_string(id));
        const BOOL done = __real___imp_KillTimer(window, id);
        EXPECT_TRUE(done);
        return done;
    };
    __wrap___imp_DestroyWindow = [](HWND window) {
        Teardown::current->Step("DestroyWindow");
        return __real___imp_DestroyWindow(window);
    };
    __wrap___imp_UnregisterClassW = [](const wchar_t* name, HINSTANCE module) -> BOOL {
        EXPECT_EQ(GetModuleHandleW(nullptr), module);
        Teardown::current->Step("UnregisterClass");
        const BOOL done = __real___imp_UnregisterClassW(name, module);
        EXPECT_TRUE(done);
        return done;
    };
}
} // namespace

TEST(NWindow, TeardownHasAnOrder) {
    Teardown object;
    object.Make(L"", WS_POPUP | WS_VISIBLE);
    object.AddTimer(8);
    object.AddTimer(9);
    WatchedCalls watched;
    WatchTeardown();
    object.Destroy();
    const Calls expected = {
        "hide: window timers class registry",
        "KillTimer 8: window timers class registry locked",
        "KillTimer 9: window timers class registry locked",
        "DestroyWindow: window class registry",
        "OnDestroy: window class registry",
        "UnregisterClass: class registry",
    };
    EXPECT_EQ(expected, object.steps);
    object.steps.clear();
    object.Step("after");
    EXPECT_EQ(Calls{"after:"}, object.steps);
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(object.timerLock.IsLocked());
    // Once more does nothing.
    object.steps.clear();
    object.Destroy();
    EXPECT_EQ(Calls{}, object.steps);
}

namespace {
// A window whose handlers call, while it goes, what they must not.
struct Recurring : RecordingWindow {
    ~Recurring() override { Destroy(); }
    void OnHide(int32_t) override { Recur(hides); }
    void OnDestroy(int32_t) override { Recur(ends); }

    void Recur(int& count) {
        constexpr int Enough = 5; // so that endless recursion ends
        if (++count > Enough)
            return;
        Destroy();
        Make();
        EXPECT_EQ(0, ShowDialog(IDD_PLAIN, nullptr, false));
        EXPECT_EQ(-1, ShowDialog(IDD_PLAIN, nullptr, true));
    }

    int hides = 0;
    int ends = 0;
};
} // namespace

TEST(NWindow, WhileItIsDestroyedNothingDestroysItAgainOrMakesAnother) {
    Recurring object;
    for (int i = 0; i < 2; ++i) {
        object.hides = 0;
        object.ends = 0;
        object.Make(L"", WS_POPUP | WS_VISIBLE);
        const HWND window = object.hwnd;
        ASSERT_NE(nullptr, window);
        const std::wstring name = object.className.Text;
        const uint32_t classes = classCounter;
        object.Destroy();
        EXPECT_EQ(1, object.hides);
        EXPECT_EQ(1, object.ends);
        EXPECT_EQ(classes, classCounter);
        EXPECT_EQ(nullptr, object.hwnd);
        EXPECT_FALSE(IsWindow(window));
        EXPECT_FALSE(ClassExists(name.c_str()));
        EXPECT_FALSE(IsRegistered(object));
    }
}

TEST(NWindow, AHandlerMayDestroyAWindowThatThePlatformDestroys) {
    struct Ending : RecordingWindow {
        int ends = 0;
        void OnDestroy(int32_t) override {
            constexpr int Enough = 5;
            if (++ends <= Enough)
                Destroy();
        }
    } object;
    object.Make();
    const HWND window = object.hwnd;
    DestroyWindow(window);
    EXPECT_EQ(2, object.ends); // Destroy ends it once more
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(IsRegistered(object));
}

TEST(NWindow, WithoutAWindowTheTimersStay) {
    NWindow object;
    object.timers.Add()->id = 8;
    object.Destroy();
    EXPECT_EQ(1, object.timers.Count());
}

TEST(NWindow, TheDestructorDestroysTheWindowAndItsClass) {
    auto object = std::make_unique<NWindow>();
    object->Create(L"", Place, WS_POPUP);
    const HWND window = object->hwnd;
    const std::wstring name = object->className.Text;
    NWindow* address = object.get();
    object.reset();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(ClassExists(name.c_str()));
    for (int i = 0; i < windowRegistry.Count; ++i)
        EXPECT_NE(address, windowRegistry.At(i));
}

TEST(NWindow, OnlyADerivedDestructorThatDestroysSeesTheEnd) {
    struct Counting : NWindow {
        explicit Counting(int* into) : count(into) {}
        void OnDestroy(int32_t) override { ++*count; }
        int* count;
    };
    struct Careful : Counting {
        using Counting::Counting;
        ~Careful() override { Destroy(); }
    };
    int count = 0;
    { Counting(&count).Create(L"", Place, WS_POPUP); }
    EXPECT_EQ(0, count);
    { Careful(&count).Create(L"", Place, WS_POPUP); }
    EXPECT_EQ(1, count);
}

TEST(NWindow, ClosingMayDestroy) {
    struct Closing : RecordingWindow {
        void OnClose(int32_t) override { Destroy(); }
    } object;
    object.Make();
    const HWND window = object.hwnd;
    object.Send(WM_CLOSE);
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(IsWindow(window));
}

TEST(NWindow, TheDestructorFreesTheCursorAndTheIcons) {
    const auto use = [] {
        NWindow object;
        object.Create(L"", Place, WS_POPUP);
        object.SetIcons(MakeIcon(), MakeIcon());
        object.cursor = static_cast<HCURSOR>(MakeIcon());
    };
    use();
    const PlatformObjects before = CountPlatformObjects();
    use();
    EXPECT_EQ(before, CountPlatformObjects());
}

TEST(NWindow, NothingOfManyWindowsStays) {
    const auto use = [](int number) {
        RecordingWindow object;
        object.Make();
        EXPECT_NE(nullptr, object.hwnd);
        object.timers.Add()->id = 8;
        SetTimer(object.hwnd, 8, 60000, nullptr);
        if (number % 5 == 0)
            object.Make();
        if (number % 7 == 0)
            object.ShowDialog(IDD_PLAIN, nullptr, false);
        else
            object.SetIcons(MakeIcon(), MakeIcon());
    };
    use(35);
    use(1);
    const int registered = windowRegistry.Count;
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 105; ++i)
        use(i);
    EXPECT_EQ(before, CountPlatformObjects());
    EXPECT_EQ(registered, windowRegistry.Count);
}

TEST(NWindow, SeveralThreadsMakeWindowsAtATime) {
    constexpr int Threads = 4;
    const int registered = windowRegistry.Count;
    int made[Threads] = {};
    {
        NThread threads[Threads];
        for (int i = 0; i < Threads; ++i)
            threads[i].Start(
                [](NEvent&, void* argument) {
                    for (int n = 0; n < 25; ++n) {
                        RecordingWindow object;
                        object.Make();
                        object.calls.clear();
                        object.Send(WM_KEYDOWN, 3, 4);
                        *static_cast<int*>(argument) +=
                            object.calls == Calls{Call("OnKeyDown", 3, 4)};
                    }
                },
                &made[i]);
    }
    for (int count : made)
        EXPECT_EQ(25, count);
    EXPECT_EQ(registered, windowRegistry.Count);
}

TEST(NWindow, AnExceptionWhileItIsMadeStopsNothing) {
    struct Throwing : RecordingWindow {
        void OnCreate(int32_t) override { throw std::runtime_error("no"); }
        void OnDestroy(int32_t) override { throw std::bad_alloc(); }
    } object;
    object.Make();
    EXPECT_NE(nullptr, object.hwnd);
    object.Destroy();
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_FALSE(IsRegistered(object));
    object.ShowDialog(IDD_PLAIN, nullptr, false);
    EXPECT_NE(nullptr, object.hwnd);
}

TEST(NWindow, AModelessDialogIsBoundAndAnswersOne) {
    RecordingWindow object;
    NWindow owner;
    owner.Create(L"", Place, WS_POPUP);
    EXPECT_EQ(1, object.ShowDialog(IDD_PLAIN, owner.hwnd, false));
    ASSERT_NE(nullptr, object.hwnd);
    EXPECT_EQ(owner.hwnd, GetWindow(object.hwnd, GW_OWNER));
    EXPECT_EQ(1, object.isDialog);
    EXPECT_TRUE(IsRegistered(object));
    EXPECT_TRUE(object.className.IsEmpty());
    EXPECT_EQ(1, std::count(object.calls.begin(), object.calls.end(), Call("OnCreate", 1)));
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(&NDialogProc),
              GetWindowLongPtrW(object.hwnd, DWLP_DLGPROC));
}

TEST(NWindow, AModalDialogReturnsWhatItIsEndedWith) {
    struct Ending : RecordingWindow {
        void OnOK(int32_t) override { EXPECT_TRUE(EndDialog(4711)); }
    } object;
    DialogHook hook([](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDOK, 0); });
    EXPECT_EQ(4711, object.ShowDialog(IDD_PLAIN, nullptr, true));
    EXPECT_TRUE(Contains(object.calls, Call("OnDestroy", 1)));
    // The object keeps the gone window, and serves another dialog.
    EXPECT_FALSE(IsWindow(object.hwnd));
    EXPECT_EQ(4711, object.ShowDialog(IDD_PLAIN, nullptr, true, GetModuleHandleW(nullptr)));
    object.Destroy();
    EXPECT_FALSE(IsRegistered(object));
}

TEST(NWindow, WithoutItsResourceThereIsNoDialog) {
    RecordingWindow object;
    EXPECT_EQ(0, object.ShowDialog(999, nullptr, false));
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_EQ(-1, object.ShowDialog(999, nullptr, true));
    EXPECT_EQ(0, object.ShowDialog(IDD_PLAIN, nullptr, false, GetModuleHandleW(L"ntdll.dll")));
    EXPECT_EQ(nullptr, object.hwnd);
    EXPECT_EQ(Calls{}, object.calls);
}

TEST(NWindow, ADialogWithoutAnObjectIsLeftToThePlatform) {
    EXPECT_EQ(0, NDialogProc(GetDesktopWindow(), WM_INITDIALOG, 0, 0));
    EXPECT_EQ(0, NDialogProc(GetDesktopWindow(), WM_COMMAND, IDOK, 0));
}
