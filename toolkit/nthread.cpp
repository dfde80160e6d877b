#include "toolkit/nthread.h"

#include <process.h>

#include <cstddef>
#include <cstdio>
#include <memory>

static_assert(offsetof(NThread, stopEvent) == 0);
static_assert(offsetof(NThread, handle) == 8);
static_assert(offsetof(NThread, maxWaitMs) == 16);
static_assert(offsetof(NThread, suspended) == 20);
static_assert(sizeof(NEvent) == sizeof(HANDLE));

namespace {
constexpr int NameUnits = 100;
constexpr DWORD WaitStepMs = 25;

// Handed to the new thread, which frees it.
struct NThreadStart {
    wchar_t name[NameUnits];
    NThreadProc proc;
    void* argument;
};

static_assert(offsetof(NThreadStart, name) == 0);
static_assert(offsetof(NThreadStart, proc) == NameUnits * sizeof(wchar_t));
static_assert(offsetof(NThreadStart, argument) == NameUnits * sizeof(wchar_t) + sizeof(void*));

// "TRDEVTQ-%d": the number is signed, and wraps around.
void FormEventName(wchar_t* name, uint32_t number) {
    swprintf(name, NameUnits, L"TRDEVTQ-%d", static_cast<int>(number));
}

// An exception that left the thread would end the whole process.
void Call(const NThreadStart& start, NEvent& stop) {
    try {
        start.proc(stop, start.argument);
    } catch (...) {
        return;
    }
}

unsigned __stdcall ThreadEntry(void* record) {
    std::unique_ptr<NThreadStart> start(static_cast<NThreadStart*>(record));
    NEvent stop;
    stop.Create(start->name);
    Call(*start, stop);
    // Wanted: this second handle of the event is let go and stays open until
    // the process ends, so that the name is not used again before.
    stop.handle = nullptr;
    return 0;
}
} // namespace

void NEvent::Create(const wchar_t* name, bool* alreadyExists) {
    Close();
    SetLastError(0);
    handle = CreateEventW(nullptr, TRUE, FALSE, name);
    if (alreadyExists)
        *alreadyExists = GetLastError() == ERROR_ALREADY_EXISTS;
}

void NEvent::Set() {
    if (handle)
        SetEvent(handle);
}

bool NEvent::IsSet() const {
    return handle && WaitForSingleObject(handle, 0) == WAIT_OBJECT_0;
}

void NEvent::Close() {
    if (handle)
        CloseHandle(handle);
    handle = nullptr;
}

void NThread::MakeStopEvent(wchar_t* name) {
    for (uint32_t i = 0;; ++i) {
        FormEventName(name, i + GetTickCount());
        bool alreadyExists = false;
        stopEvent = new NEvent;
        stopEvent->Create(name, &alreadyExists);
        if (!alreadyExists)
            return;
        DropStopEvent();
    }
}

void NThread::DropStopEvent() {
    delete stopEvent;
    stopEvent = nullptr;
}

void NThread::Start(NThreadProc proc, void* argument, bool startSuspended, int32_t maxWait) {
    // 1.
    Close();
    suspended = startSuspended;
    maxWaitMs = maxWait;
    // 2.
    auto start = std::make_unique<NThreadStart>();
    start->proc = proc;
    start->argument = argument;
    // 3.
    MakeStopEvent(start->name);
    // 4. The function answers 0 for a failure; its elder sister, -1.
    uintptr_t thread = _beginthreadex(nullptr, 0, ThreadEntry, start.get(),
                                      suspended ? CREATE_SUSPENDED : 0, nullptr);
    if (thread == 0 || thread == static_cast<uintptr_t>(-1)) {
        DropStopEvent();
        return;
    }
    handle = reinterpret_cast<HANDLE>(thread);
    static_cast<void>(start.release()); // the thread's
}

void NThread::Stop(bool wait) {
    if (!handle)
        return;
    // 1.
    if (suspended) {
        ResumeThread(handle);
        suspended = false;
    }
    // 2.
    stopEvent->Set();
    // 3.
    if (!wait)
        return;
    // 4.
    const DWORD begin = GetTickCount();
    while (WaitForSingleObject(handle, WaitStepMs) != WAIT_OBJECT_0) {
        if (maxWaitMs == 0 || GetTickCount() - begin <= static_cast<DWORD>(maxWaitMs))
            continue;
        // Wanted, although the thread may hold a lock: a thread that doesn't
        // end must not go on with data that its owner gives up.
        SuspendThread(handle);
        suspended = true;
        return;
    }
}

void NThread::Close() {
    if (!handle)
        return;
    Stop(true);
    CloseHandle(handle);
    handle = nullptr;
    DropStopEvent();
}

void NThread::SetPriority(int priority) {
    if (handle)
        SetThreadPriority(handle, priority);
}
