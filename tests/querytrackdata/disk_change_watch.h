#pragma once

#include <functional>

// Calls `watch` behind each change on the disk, and `retry` before each further
// try of a replacing move, for as long as this lives. Either may be empty.
class DiskChangeWatch {
public:
    explicit DiskChangeWatch(std::function<void()> watch, std::function<void()> retry = {});
    ~DiskChangeWatch();
    DiskChangeWatch(const DiskChangeWatch&) = delete;
    DiskChangeWatch& operator=(const DiskChangeWatch&) = delete;
};
