#pragma once

// The test program's own operator new can be told to fail for large blocks, of
// what damaged files ask for. Small ones it always gives: the library drops its
// hold on shared lists before it has copied them, and does not outlive it when
// the copy fails.
namespace tagmap {

// While it exists, the first `successes` large allocations work and all later
// ones throw std::bad_alloc. One at a time, on the thread that allocates.
class FailingLargeAllocations {
public:
    explicit FailingLargeAllocations(int successes);
    ~FailingLargeAllocations();
    FailingLargeAllocations(const FailingLargeAllocations&) = delete;
    FailingLargeAllocations& operator=(const FailingLargeAllocations&) = delete;
};

} // namespace tagmap
