#include "tests/faults/bounded_memory.h"

#include <malloc.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> limit = SIZE_MAX;
std::atomic<std::size_t> live = 0;
std::atomic<std::size_t> peak = 0;
std::atomic<bool> wasRefused = false;
} // namespace

void LimitMemory(std::size_t bytes) {
    limit = bytes;
}

std::size_t LiveMemory() {
    return live;
}

void StartMeasuring() {
    peak = live.load();
    wasRefused = false;
}

std::size_t PeakMemory() {
    return peak;
}

bool MemoryWasRefused() {
    return wasRefused;
}

void* operator new(std::size_t size) {
    if (size > limit || live + size > limit) {
        wasRefused = true;
        throw std::bad_alloc();
    }
    void* block = std::malloc(size ? size : 1);
    if (!block)
        throw std::bad_alloc();
    const std::size_t now = live += _msize(block);
    if (now > peak)
        peak = now;
    return block;
}

void operator delete(void* block) noexcept {
    if (block)
        live -= _msize(block);
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
