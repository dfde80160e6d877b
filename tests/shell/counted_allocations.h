#pragma once

#include <cstddef>

// The test program's own operator new counts what is alive, and can be told
// to fail.

// Blocks taken by operator new and not freed yet.
std::ptrdiff_t LiveAllocations();

// While it exists, the first `successes` allocations work and all later ones
// throw std::bad_alloc. One at a time, on the thread that allocates.
class FailingAllocations {
public:
    explicit FailingAllocations(int successes);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
};
