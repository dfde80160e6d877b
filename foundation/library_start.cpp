#include "foundation/library_start.h"

#include <pthread.h>

#include <algorithm>
#include <iterator>

// The linker and the compiler's own libraries have chosen these names.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
// The C run-time's own entry point, which calls DllMain.
BOOL WINAPI DllMainCRTStartup(HINSTANCE instance, DWORD reason, LPVOID reserved);
// The image's directory of thread-local storage, of the compiler's start-up code.
extern const IMAGE_TLS_DIRECTORY64 _tls_used;

// The address that all code of this image calls TlsAlloc through. It stands
// before the one of kernel32's import library.
extern DWORD(WINAPI* __imp_TlsAlloc)();

// The linker leads the calls of these to the __wrap_ ones.
int __real_pthread_cond_broadcast(pthread_cond_t* condition);
int __wrap_pthread_cond_broadcast(pthread_cond_t* condition);
int __real_pthread_cond_init(pthread_cond_t* condition, const pthread_condattr_t* attributes);
int __wrap_pthread_cond_init(pthread_cond_t* condition, const pthread_condattr_t* attributes);
int __real_pthread_cond_destroy(pthread_cond_t* condition);
int __wrap_pthread_cond_destroy(pthread_cond_t* condition);
}

namespace {
// A few things that this image has taken from the process, on whichever thread.
// What doesn't fit is not remembered, and stays taken. Needs no run-time.
template <typename Thing>
class Taken {
public:
    void Add(Thing thing) {
        AcquireSRWLockExclusive(&lock_);
        if (count_ < std::size(things_))
            things_[count_++] = thing;
        ReleaseSRWLockExclusive(&lock_);
    }
    void Remove(Thing thing) {
        AcquireSRWLockExclusive(&lock_);
        count_ = static_cast<size_t>(std::remove(things_, things_ + count_, thing) - things_);
        ReleaseSRWLockExclusive(&lock_);
    }
    // When nothing else runs any more.
    template <typename Action>
    void GiveBack(Action action) {
        std::for_each(things_, things_ + count_, action);
        count_ = 0;
    }

private:
    SRWLOCK lock_ = SRWLOCK_INIT;
    Thing things_[32] = {};
    size_t count_ = 0;
};
constinit Taken<DWORD> slots;
constinit Taken<pthread_cond_t*> conditions;

DWORD WINAPI TakeSlot() {
    using Alloc = DWORD(WINAPI*)();
    const auto alloc =
        reinterpret_cast<Alloc>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "TlsAlloc"));
    const DWORD slot = alloc ? alloc() : TLS_OUT_OF_INDEXES;
    if (slot != TLS_OUT_OF_INDEXES)
        slots.Add(slot);
    return slot;
}

// As at the end of this thread: the threads library closes what it has for it.
void LeaveThread(HINSTANCE instance) {
    auto* callback = reinterpret_cast<const PIMAGE_TLS_CALLBACK*>(_tls_used.AddressOfCallBacks);
    for (; callback && *callback; ++callback)
        (*callback)(instance, DLL_THREAD_DETACH, nullptr);
}

void GiveAllBack(HINSTANCE instance) {
    LeaveThread(instance);
    conditions.GiveBack([](pthread_cond_t* condition) { __real_pthread_cond_destroy(condition); });
    slots.GiveBack([](DWORD slot) { TlsFree(slot); });
}
} // namespace

extern "C" {
DWORD(WINAPI* __imp_TlsAlloc)() = TakeSlot;

// The run-time tells all who wait for the static object of a function that it
// is made. Their condition is initialised by its first use, unseen from here;
// one that nobody has waited by needs no call.
int __wrap_pthread_cond_broadcast(pthread_cond_t* condition) {
    // A number, in this threads library: NOLINTNEXTLINE(misc-non-copyable-objects)
    return *condition == PTHREAD_COND_INITIALIZER ? 0 : __real_pthread_cond_broadcast(condition);
}

int __wrap_pthread_cond_init(pthread_cond_t* condition, const pthread_condattr_t* attributes) {
    const int result = __real_pthread_cond_init(condition, attributes);
    if (result == 0)
        conditions.Add(condition);
    return result;
}

int __wrap_pthread_cond_destroy(pthread_cond_t* condition) {
    conditions.Remove(condition);
    return __real_pthread_cond_destroy(condition);
}

BOOL WINAPI NLibraryStart(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    const BOOL started = DllMainCRTStartup(instance, reason, reserved);
    // At the end of the process the system takes all back by itself.
    if (reason == DLL_PROCESS_DETACH && !reserved)
        GiveAllBack(instance);
    return started;
}
}
// NOLINTEND(bugprone-reserved-identifier)
