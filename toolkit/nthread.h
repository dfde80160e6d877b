#pragma once

#include "foundation/windows_lean.h"

#include <cstdint>

// A named manual-reset event, owned. No operation reports a failure; without
// a handle an event can't be set, and is never set. Several threads may call
// Set and IsSet at a time.
class NEvent {
public:
    NEvent() = default;
    NEvent(const NEvent&) = delete;
    NEvent& operator=(const NEvent&) = delete;
    ~NEvent() { Close(); }

    // Closes an earlier event, and makes one that isn't signalled, or opens
    // the one of this name. `alreadyExists`, if given, says which.
    void Create(const wchar_t* name, bool* alreadyExists = nullptr);
    void Set();
    bool IsSet() const;
    void Close();

    HANDLE handle = nullptr;
};

// Runs on the new thread. It is asked to end by `stop`, which it tests at its
// own pace. An exception that it lets out ends it as a return does.
using NThreadProc = void (*)(NEvent& stop, void* argument);

// One thread and the event that means "stop" to it. What else passes between
// the owner and the thread is the owner's affair: it may touch the thread's
// data once `handle` is signalled. An NThread belongs to one thread at a time.
//
// `handle` stays set when the thread has ended, until Close or the next Start.
class NThread {
public:
    NThread() = default;
    NThread(const NThread&) = delete;
    NThread& operator=(const NThread&) = delete;
    ~NThread() { Close(); }

    // Stops and waits for an earlier thread, then starts `proc`, held with
    // `suspended` until Stop. `maxWait` in milliseconds, 0 for no limit, is
    // how long Stop may wait. `handle` is null after it if there is no thread.
    //
    // Each thread leaves one handle of its event open until the process ends.
    void Start(NThreadProc proc, void* argument, bool suspended = false, int32_t maxWait = 0);
    // Sets the event, and lets a held thread run. With `wait` it returns when
    // the thread has ended, or holds the thread where it stands once more than
    // `maxWaitMs` have passed. The wait serves no messages: don't stop a
    // thread that needs an answer from a window of this one.
    void Stop(bool wait);
    // Stops, waits, and forgets the thread. One that Stop gave up on stays
    // held for good.
    void Close();
    // A THREAD_PRIORITY_ value.
    void SetPriority(int priority);

    NEvent* stopEvent = nullptr; // owned
    HANDLE handle = nullptr;     // owned
    int32_t maxWaitMs = 0;
    bool suspended = false; // held: started so, or given up on by Stop

private:
    void MakeStopEvent(wchar_t* name);
    void DropStopEvent();
};
