#pragma once

#include <cstdint>

// Counts the calls under way on an object, so that one which is released
// inside a call on it lives on until the outermost call returns: whatever waits
// for tips or shows a menu dispatches messages of the thread, by which the
// window that the object belongs to may come to its end. All of it belongs to
// one thread.
class NCallCount {
public:
    using DestroyObject = void (*)(void* object);

    // `object` has the count as a member, as a rule.
    NCallCount(void* object, DestroyObject destroy) : object_(object), destroy_(destroy) {}
    NCallCount(const NCallCount&) = delete;
    NCallCount& operator=(const NCallCount&) = delete;

    // Has the object destroyed: at once, or by the end of the outermost call.
    void Release();

    // A call to the end of the scope; on nothing, for null. It stands before
    // all else in whatever the platform calls.
    class Call {
    public:
        explicit Call(NCallCount* count);
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call();

    private:
        NCallCount* count_;
    };

private:
    void* object_;
    DestroyObject destroy_;
    int32_t underWay_ = 0;
    bool isReleased_ = false;
};
