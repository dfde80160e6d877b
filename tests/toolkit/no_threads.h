#pragma once

#include <cstdint>

// The linker has the start of every thread go through this pointer, which
// nthread_test.cpp has.
extern "C" {
using BeginThread = uintptr_t (*)(void*, unsigned, unsigned(__stdcall*)(void*), void*, unsigned,
                                  unsigned*);
extern BeginThread __real___imp__beginthreadex;
extern BeginThread __wrap___imp__beginthreadex;
}

// While it lives no thread can be started; the attempt's answer is `answer`.
class NoThreads {
public:
    explicit NoThreads(uintptr_t answer = 0) {
        answer_ = answer;
        __wrap___imp__beginthreadex = [](void*, unsigned, unsigned(__stdcall*)(void*), void*,
                                         unsigned, unsigned*) { return answer_; };
    }
    ~NoThreads() { __wrap___imp__beginthreadex = former_; }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

private:
    inline static uintptr_t answer_;
    BeginThread former_ = __wrap___imp__beginthreadex;
};
