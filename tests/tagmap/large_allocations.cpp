#include "tests/tagmap/large_allocations.h"

#include <cstdlib>
#include <new>

namespace {
constexpr std::size_t LargeSize = 1024;
constexpr int NoLimit = -1;
thread_local int successesLeft = NoLimit;

bool MayAllocate(std::size_t size) {
    if (size < LargeSize || successesLeft == NoLimit)
        return true;
    return successesLeft > 0 && successesLeft-- > 0;
}
} // namespace

namespace tagmap {

FailingLargeAllocations::FailingLargeAllocations(int successes) {
    successesLeft = successes;
}

FailingLargeAllocations::~FailingLargeAllocations() {
    successesLeft = NoLimit;
}

} // namespace tagmap

void* operator new(std::size_t size) {
    void* block = MayAllocate(size) ? std::malloc(size ? size : 1) : nullptr;
    if (!block)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
