#include "foundation/unique_handle.h"
#include "tests/support/leak_counters.h"
#include "tests/toolkit/no_threads.h"
#include "toolkit/nthread.h"

#include <gtest/gtest.h>

#include <winternl.h>

#include <cstddef>
#include <future>
#include <stdexcept>
#include <string>
#include <vector>

BeginThread __wrap___imp__beginthreadex = [](void* security, unsigned stack,
                                             unsigned(__stdcall* entry)(void*), void* argument,
                                             unsigned flags, unsigned* id) {
    return __real___imp__beginthreadex(security, stack, entry, argument, flags, id);
};

namespace {
constexpr DWORD LongEnough = 30000; // for what must happen
constexpr DWORD ShortWhile = 100;   // for what must not

UniqueKernelHandle ManualEvent() {
    return UniqueKernelHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

bool Happened(HANDLE object, DWORD milliseconds = LongEnough) {
    return WaitForSingleObject(object, milliseconds) == WAIT_OBJECT_0;
}

void WaitForStop(NEvent& stop, void*) {
    WaitForSingleObject(stop.handle, LongEnough);
}

void ReturnAtOnce(NEvent&, void*) {}

// A thread that tells that it runs, doesn't look at its stop event, and ends
// when it is let go.
struct Deaf {
    UniqueKernelHandle runs = ManualEvent();
    UniqueKernelHandle letGo = ManualEvent();

    static void Run(NEvent&, void* argument) {
        auto* deaf = static_cast<Deaf*>(argument);
        SetEvent(deaf->runs.Get());
        WaitForSingleObject(deaf->letGo.Get(), LongEnough);
    }
};

std::wstring EventName(DWORD number) {
    return L"TRDEVTQ-" + std::to_wstring(static_cast<int32_t>(number));
}

// The name that the platform knows the object by, without its folder.
std::wstring NameOf(HANDLE object) {
    constexpr ULONG ObjectNameInformation = 1;
    using QueryObject = LONG(WINAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*);
    static const auto query = reinterpret_cast<QueryObject>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryObject"));
    std::vector<uint64_t> space(256);
    ULONG size = 0;
    if (query(object, ObjectNameInformation, space.data(),
              static_cast<ULONG>(space.size() * sizeof(uint64_t)), &size) != 0)
        return L"";
    const auto* name = reinterpret_cast<const UNICODE_STRING*>(space.data());
    std::wstring path(name->Buffer, name->Length / sizeof(wchar_t));
    return path.substr(path.rfind(L'\\') + 1);
}

DWORD NumberIn(const std::wstring& name) {
    return static_cast<DWORD>(std::stoll(name.substr(name.find(L'-') + 1)));
}

std::wstring UniqueName() {
    return L"TonewrightEventTest" + std::to_wstring(GetCurrentProcessId());
}
} // namespace

TEST(NThread, ItsMembersStandInTheirOrder) {
    EXPECT_EQ(0u, offsetof(NThread, stopEvent));
    EXPECT_EQ(8u, offsetof(NThread, handle));
    EXPECT_EQ(16u, offsetof(NThread, maxWaitMs));
    EXPECT_EQ(20u, offsetof(NThread, suspended));
}

TEST(NEvent, IsSetOnceAndStaysSet) {
    NEvent event;
    event.Create(nullptr);
    EXPECT_FALSE(event.IsSet());
    event.Set();
    EXPECT_TRUE(event.IsSet());
    EXPECT_TRUE(event.IsSet());
}

TEST(NEvent, WithoutAHandleItIsNeverSet) {
    NEvent event;
    event.Set();
    EXPECT_FALSE(event.IsSet());
    event.Close();
    event.Close();
    EXPECT_EQ(nullptr, event.handle);
}

TEST(NEvent, ANameThatExistsOpensTheSameEvent) {
    const std::wstring name = UniqueName();
    NEvent first;
    NEvent second;
    bool existed = true;
    SetLastError(ERROR_ALREADY_EXISTS); // of an earlier call
    first.Create(name.c_str(), &existed);
    EXPECT_FALSE(existed);
    second.Create(name.c_str(), &existed);
    EXPECT_TRUE(existed);
    first.Set();
    EXPECT_TRUE(second.IsSet());
}

TEST(NEvent, CreateClosesTheEarlierEvent) {
    const std::wstring name = UniqueName();
    NEvent event;
    event.Create(name.c_str());
    event.Set();
    bool existed = true;
    event.Create(name.c_str(), &existed);
    EXPECT_FALSE(existed);
    EXPECT_FALSE(event.IsSet());
}

TEST(NEvent, ANameOfAnotherKindOfObjectGivesNoEvent) {
    const std::wstring name = UniqueName();
    UniqueKernelHandle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
    NEvent event;
    bool existed = true;
    event.Create(name.c_str(), &existed);
    EXPECT_EQ(nullptr, event.handle);
    EXPECT_FALSE(existed);
}

TEST(NEvent, TheDestructorClosesTheHandle) {
    { NEvent().Create(nullptr); }
    const int before = CountKernelHandles();
    { NEvent().Create(nullptr); }
    EXPECT_EQ(before, CountKernelHandles());
}

TEST(NThread, ItsFunctionRunsOnAnotherThreadWithItsArgument) {
    struct Seen {
        DWORD thread = 0;
        bool wasSet = true;
    } seen;
    NThread thread;
    thread.Start(
        [](NEvent& stop, void* argument) {
            auto* into = static_cast<Seen*>(argument);
            into->thread = GetCurrentThreadId();
            into->wasSet = stop.IsSet();
        },
        &seen);
    ASSERT_TRUE(Happened(thread.handle));
    EXPECT_NE(0u, seen.thread);
    EXPECT_NE(GetCurrentThreadId(), seen.thread);
    EXPECT_FALSE(seen.wasSet);
}

TEST(NThread, ItEndsWithTheExitCodeZeroAndKeepsItsHandleUntilClose) {
    NThread thread;
    thread.Start(ReturnAtOnce, nullptr);
    ASSERT_TRUE(Happened(thread.handle));
    DWORD exitCode = 1;
    EXPECT_TRUE(GetExitCodeThread(thread.handle, &exitCode));
    EXPECT_EQ(0u, exitCode);
    thread.Close();
    EXPECT_EQ(nullptr, thread.handle);
    EXPECT_EQ(nullptr, thread.stopEvent);
}

TEST(NThread, AnExceptionOfItsFunctionEndsTheThreadAndNothingElse) {
    NThread thread;
    thread.Start([](NEvent&, void*) { throw std::runtime_error("not for the process"); }, nullptr);
    ASSERT_TRUE(Happened(thread.handle));
    DWORD exitCode = 1;
    EXPECT_TRUE(GetExitCodeThread(thread.handle, &exitCode));
    EXPECT_EQ(0u, exitCode);
}

TEST(NThread, StopWithoutWaitingSetsTheEventOfTheThread) {
    NThread thread;
    thread.Start(WaitForStop, nullptr);
    EXPECT_FALSE(Happened(thread.handle, ShortWhile));
    thread.Stop(false);
    EXPECT_TRUE(Happened(thread.handle));
}

TEST(NThread, StopWithoutALimitBlocksUntilTheThreadEnds) {
    Deaf deaf;
    NThread thread;
    thread.Start(Deaf::Run, &deaf);
    std::future<void> stopped = std::async(std::launch::async, [&] { thread.Stop(true); });
    EXPECT_EQ(std::future_status::timeout, stopped.wait_for(std::chrono::milliseconds(300)));
    SetEvent(deaf.letGo.Get());
    stopped.get();
    EXPECT_TRUE(Happened(thread.handle, 0));
    EXPECT_FALSE(thread.suspended);
}

TEST(NThread, StopGivesUpAfterItsLimitAndHoldsTheThread) {
    constexpr int32_t Limit = 100;
    Deaf deaf;
    NThread thread;
    thread.Start(Deaf::Run, &deaf, false, Limit);
    ASSERT_TRUE(Happened(deaf.runs.Get()));
    const DWORD begin = GetTickCount();
    thread.Stop(true);
    EXPECT_GT(GetTickCount() - begin, static_cast<DWORD>(Limit));
    EXPECT_TRUE(thread.suspended);
    // It is let go, but stands still.
    SetEvent(deaf.letGo.Get());
    EXPECT_FALSE(Happened(thread.handle, ShortWhile));
    // The next Stop lets it run first.
    thread.Stop(false);
    EXPECT_FALSE(thread.suspended);
    EXPECT_TRUE(Happened(thread.handle));
}

TEST(NThread, AThreadThatEndsWithinTheLimitIsNotHeld) {
    NThread thread;
    thread.Start(WaitForStop, nullptr, false, static_cast<int32_t>(LongEnough));
    thread.Stop(true);
    EXPECT_TRUE(Happened(thread.handle, 0));
    EXPECT_FALSE(thread.suspended);
}

TEST(NThread, StartedSuspendedItRunsWhenItIsStopped) {
    Deaf deaf;
    NThread thread;
    thread.Start(Deaf::Run, &deaf, true);
    EXPECT_TRUE(thread.suspended);
    EXPECT_FALSE(Happened(deaf.runs.Get(), ShortWhile));
    thread.Stop(false);
    EXPECT_FALSE(thread.suspended);
    EXPECT_TRUE(Happened(deaf.runs.Get()));
    SetEvent(deaf.letGo.Get());
}

TEST(NThread, CloseEndsASuspendedThread) {
    NThread thread;
    thread.Start(WaitForStop, nullptr, true);
    thread.Close();
    EXPECT_EQ(nullptr, thread.handle);
}

TEST(NThread, TheDestructorStopsAndWaits) {
    struct Ended {
        UniqueKernelHandle event = ManualEvent();
    } ended;
    {
        NThread thread;
        thread.Start(
            [](NEvent& stop, void* argument) {
                WaitForSingleObject(stop.handle, LongEnough);
                SetEvent(static_cast<Ended*>(argument)->event.Get());
            },
            &ended);
    }
    EXPECT_TRUE(Happened(ended.event.Get(), 0));
}

TEST(NThread, StartingAgainStopsTheFirstThreadBeforeTheSecondBegins) {
    struct Order {
        UniqueKernelHandle firstEnded = ManualEvent();
        bool firstHadEnded = false;
    } order;
    NThread thread;
    thread.Start(
        [](NEvent& stop, void* argument) {
            WaitForSingleObject(stop.handle, LongEnough);
            SetEvent(static_cast<Order*>(argument)->firstEnded.Get());
        },
        &order);
    thread.Start(
        [](NEvent&, void* argument) {
            auto* seen = static_cast<Order*>(argument);
            seen->firstHadEnded = Happened(seen->firstEnded.Get(), 0);
        },
        &order);
    ASSERT_TRUE(Happened(thread.handle));
    EXPECT_TRUE(order.firstHadEnded);
}

TEST(NThread, TheNewThreadsStopEventIsNotSet) {
    NThread thread;
    thread.Start(WaitForStop, nullptr);
    thread.Stop(true);
    thread.Start(WaitForStop, nullptr);
    EXPECT_FALSE(thread.stopEvent->IsSet());
    EXPECT_FALSE(Happened(thread.handle, ShortWhile));
}

TEST(NThread, ItsEventIsNamedByTheTickCount) {
    NThread thread;
    const DWORD before = GetTickCount();
    thread.Start(WaitForStop, nullptr);
    const DWORD after = GetTickCount();
    const std::wstring name = NameOf(thread.stopEvent->handle);
    const DWORD number = NumberIn(name);
    EXPECT_EQ(EventName(number), name);
    EXPECT_GE(number - before, 0u);
    // Other threads of this process may have left names, which are passed over.
    EXPECT_LE(number - before, after - before + 100);
}

TEST(NThread, ANameThatIsTakenIsPassedOver) {
    constexpr DWORD Taken = 3000; // more ticks than the start of a thread takes
    const DWORD first = GetTickCount();
    std::vector<UniqueKernelHandle> taken;
    for (DWORD i = 0; i < Taken; ++i)
        taken.emplace_back(CreateEventW(nullptr, TRUE, FALSE, EventName(first + i).c_str()));
    NThread thread;
    thread.Start(WaitForStop, nullptr);
    for (const UniqueKernelHandle& event : taken)
        SetEvent(event.Get());
    EXPECT_FALSE(thread.stopEvent->IsSet());
    EXPECT_FALSE(Happened(thread.handle, ShortWhile));
    EXPECT_GE(NumberIn(NameOf(thread.stopEvent->handle)), first + Taken);
}

TEST(NThread, TwoStartedWithinOneTickHaveEventsOfTheirOwn) {
    constexpr int Tries = 200;
    for (int i = 0; i < Tries; ++i) {
        NThread first;
        NThread second;
        const DWORD tick = GetTickCount();
        first.Start(WaitForStop, nullptr, true);
        second.Start(WaitForStop, nullptr, true);
        const bool oneTick = tick == GetTickCount();
        first.stopEvent->Set();
        EXPECT_FALSE(second.stopEvent->IsSet());
        EXPECT_NE(NameOf(first.stopEvent->handle), NameOf(second.stopEvent->handle));
        if (oneTick)
            return;
    }
    FAIL() << "no two threads were started within one tick";
}

TEST(NThread, EachRunLeavesOneHandleOfItsEventOpenAndNothingElse) {
    constexpr int Runs = 1000;
    {
        NThread warmUp;
        warmUp.Start(ReturnAtOnce, nullptr);
    }
    const int before = CountKernelHandles();
    const int threadsBefore = CountThreads();
    std::wstring lastName;
    for (int i = 0; i < Runs; ++i) {
        NThread thread;
        thread.Start(ReturnAtOnce, nullptr);
        lastName = NameOf(thread.stopEvent->handle);
        thread.Close();
    }
    EXPECT_EQ(before + Runs, CountKernelHandles());
    EXPECT_EQ(threadsBefore, CountThreads());
    UniqueKernelHandle still(OpenEventW(SYNCHRONIZE, FALSE, lastName.c_str()));
    EXPECT_TRUE(still);
}

TEST(NThread, AThreadThatCannotBeStartedLeavesNoHandleAndNothingElse) {
    const auto startInVain = [](NThread& thread) {
        thread.Start(WaitForStop, nullptr);
        EXPECT_EQ(nullptr, thread.handle);
    };
    for (uintptr_t answer : {uintptr_t{0}, UINTPTR_MAX}) {
        NThread thread;
        thread.Start(ReturnAtOnce, nullptr);
        thread.Close();
        NoThreads none(answer);
        const int before = CountKernelHandles();
        startInVain(thread);
        EXPECT_EQ(before, CountKernelHandles());
        thread.Stop(true);
        thread.Close();
    }
    NThread thread;
    {
        NoThreads none(0);
        startInVain(thread);
    }
    thread.Start(WaitForStop, nullptr);
    EXPECT_NE(nullptr, thread.handle);
}

TEST(NThread, ItsPriorityCanBeSet) {
    NThread thread;
    thread.SetPriority(THREAD_PRIORITY_BELOW_NORMAL);
    thread.Start(WaitForStop, nullptr);
    thread.SetPriority(THREAD_PRIORITY_BELOW_NORMAL);
    EXPECT_EQ(THREAD_PRIORITY_BELOW_NORMAL, GetThreadPriority(thread.handle));
}

TEST(NThread, WithoutAThreadStopAndCloseDoNothing) {
    NThread thread;
    thread.Stop(true);
    thread.Stop(false);
    thread.Close();
    thread.Close();
    EXPECT_EQ(nullptr, thread.handle);
    EXPECT_EQ(nullptr, thread.stopEvent);
    EXPECT_FALSE(thread.suspended);
}
