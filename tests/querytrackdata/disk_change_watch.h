#pragma once

#include <functional>

// Calls `watch` behind each change on the disk, for as long as this lives.
class DiskChangeWatch {
public:
    explicit DiskChangeWatch(std::function<void()> watch);
    ~DiskChangeWatch();
    DiskChangeWatch(const DiskChangeWatch&) = delete;
    DiskChangeWatch& operator=(const DiskChangeWatch&) = delete;
};
