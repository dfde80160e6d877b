#include "tests/querytrackdata/disk_change_watch.h"

#include "suite/querytrackdata/disk_change.h"

#include <utility>

namespace {
std::function<void()> presentWatch;
std::function<void()> presentRetry;
} // namespace

void AfterDiskChange() {
    if (presentWatch)
        presentWatch();
}

void BeforeMoveRetry() {
    if (presentRetry)
        presentRetry();
}

DiskChangeWatch::DiskChangeWatch(std::function<void()> watch, std::function<void()> retry) {
    presentWatch = std::move(watch);
    presentRetry = std::move(retry);
}

DiskChangeWatch::~DiskChangeWatch() {
    presentWatch = nullptr;
    presentRetry = nullptr;
}
