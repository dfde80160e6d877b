#include "foundation/nmutex.h"
#include "foundation/windows_lean.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {
bool CanBeTakenByAnotherThread(NMutex& mutex) {
    bool taken = false;
    std::thread other([&] {
        taken = mutex.TryLock();
        if (taken)
            mutex.Unlock();
    });
    other.join();
    return taken;
}

std::wstring UniqueName() {
    return L"TonewrightMutexTest" + std::to_wstring(GetCurrentProcessId());
}
} // namespace

TEST(NMutex, IsFreeAtTheStart) {
    NMutex mutex;
    EXPECT_FALSE(mutex.IsLocked());
    EXPECT_TRUE(CanBeTakenByAnotherThread(mutex));
}

TEST(NMutex, ALockedOneCantBeTakenByAnotherThread) {
    NMutex mutex;
    mutex.Lock();
    EXPECT_TRUE(mutex.IsLocked());
    EXPECT_FALSE(CanBeTakenByAnotherThread(mutex));
    mutex.Unlock();
    EXPECT_FALSE(mutex.IsLocked());
    EXPECT_TRUE(CanBeTakenByAnotherThread(mutex));
}

TEST(NMutex, IsRecursiveOnOneThread) {
    NMutex mutex;
    mutex.Lock();
    EXPECT_TRUE(mutex.TryLock());
    mutex.Unlock();
    EXPECT_FALSE(CanBeTakenByAnotherThread(mutex));
    mutex.Unlock();
    EXPECT_TRUE(CanBeTakenByAnotherThread(mutex));
}

TEST(NMutex, CreateReportsAnExistingName) {
    std::wstring name = UniqueName();
    NMutex first;
    NMutex second;
    bool existed = true;
    EXPECT_TRUE(first.Create(name.c_str(), existed));
    EXPECT_FALSE(existed);
    EXPECT_TRUE(second.Create(name.c_str(), existed));
    EXPECT_TRUE(existed);
    first.Lock();
    EXPECT_FALSE(CanBeTakenByAnotherThread(second));
    first.Unlock();
}

TEST(NMutex, CreateFailsForANameOfAnotherKindOfObject) {
    std::wstring name = UniqueName() + L"Event";
    UniqueKernelHandle event(CreateEventW(nullptr, FALSE, FALSE, name.c_str()));
    NMutex mutex;
    bool existed = true;
    EXPECT_FALSE(mutex.Create(name.c_str(), existed));
    EXPECT_FALSE(existed);
    mutex.Lock();
    EXPECT_FALSE(mutex.IsLocked());
    EXPECT_FALSE(mutex.TryLock());
    EXPECT_FALSE(mutex.IsLocked());
}

TEST(NMutex, TheDestructorClosesTheHandle) {
    std::wstring name = UniqueName() + L"Closed";
    bool existed = true;
    {
        NMutex mutex;
        mutex.Create(name.c_str(), existed);
    }
    NMutex again;
    again.Create(name.c_str(), existed);
    EXPECT_FALSE(existed);
}

TEST(NMutex, AMutexWhoseOwnerEndedIsTakenAllTheSame) {
    NMutex mutex;
    std::thread([&] { mutex.Lock(); }).join();
    EXPECT_TRUE(mutex.TryLock());
    mutex.Unlock();
}

TEST(NMutex, ALockIsHeldToTheEndOfItsScope) {
    NMutex mutex;
    {
        NMutexLock lock(mutex);
        EXPECT_FALSE(CanBeTakenByAnotherThread(mutex));
    }
    EXPECT_TRUE(CanBeTakenByAnotherThread(mutex));
}
