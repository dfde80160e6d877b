#include "tests/querytrackdata/disk_change_watch.h"

#include "suite/querytrackdata/disk_change.h"

#include <utility>

namespace {
std::function<void()> present;
}

void AfterDiskChange() {
    if (present)
        present();
}

DiskChangeWatch::DiskChangeWatch(std::function<void()> watch) {
    present = std::move(watch);
}

DiskChangeWatch::~DiskChangeWatch() {
    present = nullptr;
}
