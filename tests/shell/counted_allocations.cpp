#include "tests/shell/counted_allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

constexpr int NoLimit = -1;

std::atomic<std::ptrdiff_t> live = 0;
thread_local int successesLeft = NoLimit;

} // namespace

std::ptrdiff_t LiveAllocations() {
    return live;
}

FailingAllocations::FailingAllocations(int successes) {
    successesLeft = successes;
}

FailingAllocations::~FailingAllocations() {
    successesLeft = NoLimit;
}

void* operator new(std::size_t size) {
    if (successesLeft == 0)
        throw std::bad_alloc();
    void* block = std::malloc(size ? size : 1);
    if (!block)
        throw std::bad_alloc();
    if (successesLeft != NoLimit)
        --successesLeft;
    ++live;
    return block;
}

void operator delete(void* block) noexcept {
    if (block)
        --live;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
