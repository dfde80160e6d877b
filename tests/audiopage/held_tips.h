#pragma once

#include "foundation/unique_handle.h"
#include "toolkit/nwindow.h"
#include "toolkit/tip_thread.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

// Another thread holds the lock of the tips until a message is dispatched that
// was posted by PostEnd.
class HeldTips : public NWindow {
public:
    HeldTips() {
        Create(L"", {0, 0, 10, 10}, WS_POPUP);
        holder_ = std::thread([this] {
            const NMutexLock lock(tipLock);
            SetEvent(held_.Get());
            WaitForSingleObject(end_.Get(), LongestMs);
        });
        EXPECT_EQ(WaitForSingleObject(held_.Get(), LongestMs), WAIT_OBJECT_0);
    }
    ~HeldTips() override {
        SetEvent(end_.Get());
        holder_.join();
        Destroy();
    }

    // `onEnd` runs when the lock is free.
    void PostEnd(std::function<void()> onEnd = [] {}) {
        onEnd_ = std::move(onEnd);
        PostMessageW(hwnd, End, 0, 0);
    }
    bool HasEnded() const { return WaitForSingleObject(end_.Get(), 0) == WAIT_OBJECT_0; }

    LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
        if (message == End) {
            SetEvent(end_.Get());
            onEnd_();
        }
        return 0;
    }

private:
    static constexpr UINT End = WM_APP + 7;
    static constexpr DWORD LongestMs = 30000;

    std::function<void()> onEnd_;
    UniqueKernelHandle held_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    UniqueKernelHandle end_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::thread holder_;
};
